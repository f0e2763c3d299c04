// The LOAD command (E4CmdLoad): the source of the values, the key of the
// parameter, and the walks AL and UN through the chain of parameters.
#include "monitor/load_check.h"

#include "monitor/command_words.h"
#include "core/e4dataset.h"
#include "monitor/help_sections.h"
#include "core/sysinf.h"
#include "platform/units.h"
#include "textfile/line_splitters.h"
#include "core/string_tools.h"

namespace {

struct ParameterKey {
    std::string_view key;
    LoadParameter parameter;
    int element;  // cleared before the load
};

// Tested against word 3 in this order.
constexpr ParameterKey kKeys[] = {
    {"MAXN", LoadParameter::MaxNFE, row::maxNFE}, {"MAXI", LoadParameter::MaxITR, row::maxITR},
    {"NV", LoadParameter::NVar, row::nVar},     {"IF", LoadParameter::IFixer, row::nFree},
    {"STE", LoadParameter::XStep, row::xStepSet},   {"XSTE", LoadParameter::XStep, row::xStepSet},
    {"XSC", LoadParameter::XScale, row::xScaleSet},  {"XST", LoadParameter::XStart, row::xStartSet},
    {"XS", LoadParameter::XStart, row::xStartSet},   {"RX", LoadParameter::RXTol, row::rXTolSet},
    {"RF", LoadParameter::RFTol, row::rFTolSet},    {"TO", LoadParameter::TolScl, row::tolSclSet},
    {"DE", LoadParameter::Deviat, row::deviatSet},   {"HC", LoadParameter::HCond, row::hCondSet},
    {"FR", LoadParameter::FrlErr, row::FrlErrSet},   {"FIN", LoadParameter::FinDif, row::finDifSet},
    {"BL", LoadParameter::Bounds, row::bLSet},   {"BU", LoadParameter::Bounds, row::bUSet},
    {"STPM", LoadParameter::StpMax, row::stpMaxSet}, {"DIR", LoadParameter::Direct, row::directSet},
    {"TE", LoadParameter::Temper, row::temperSet},   {"NT", LoadParameter::NtriesT, row::NtriesT},
    {"TS", LoadParameter::Tsced, row::TscedSet},
};

// The chain of AL and UN.
constexpr LoadParameter kChain[] = {
    LoadParameter::MaxNFE, LoadParameter::MaxITR, LoadParameter::NVar,   LoadParameter::IFixer,
    LoadParameter::XStart, LoadParameter::XStep,  LoadParameter::RXTol,  LoadParameter::RFTol,
    LoadParameter::TolScl, LoadParameter::Deviat, LoadParameter::HCond,  LoadParameter::FrlErr,
    LoadParameter::FinDif, LoadParameter::Bounds, LoadParameter::StpMax, LoadParameter::XScale,
    LoadParameter::Direct, LoadParameter::Temper, LoadParameter::NtriesT, LoadParameter::Tsced,
};

bool onTerminal(int channel) { return channel < 1 || unit::isTerminal(channel); }

// The source word names no source: the words move right from word 2 on
// and word 2 becomes FILE or TERMINAL.
Outcome addSourceWord(MonitorState& m) {
    for (int n = kWordCount; n > 2; --n) m.word(n) = m.word(n - 1);
    setWord(m, 2, "");
    std::string source = "TERMINAL";
    if (!interactive()) {
        source = "FILE";
    } else if (wordBlank(m, 4) || (wordBegins(m, 4, "A") && wordBlank(m, 5))) {
        std::string reply = askReply("Data source? [ Terminal / File ]", "Terminal", sysinf.CursorPosition);
        if (!reply.empty() && (reply[0] == 'F' || reply[0] == 'f')) source = "FILE";
    }
    setWord(m, 2, source);
    setLine(m, joinedWords(m));
    return Outcome::Rewrite;
}

// LOAD,FILE...: a data file that is not open yet is opened first.
std::optional<Outcome> fileSource(MonitorState& m) {
    if (!wordBlank(m, 4)) return std::nullopt;  // the values are on the line
    if (!onTerminal(sysinf.drUnit)) {
        m.sourceChannel = sysinf.drUnit;
        return std::nullopt;
    }
    std::string first(kWordWidth, ' ');
    std::string second(kWordWidth, ' ');
    int count = 0;
    int status = 0;
    R02CLS2(wordText(m, 2), first, second, count, status);
    std::string file = E4DataSet.drName;
    if (status == 0 && count == 2) {
        setWord(m, 2, "FILE");
        file = second;
    }
    setLine(m, "OPEN DATA READ " + file.substr(0, static_cast<std::size_t>(R02LEN(file))));
    return Outcome::Prerequisite;
}

// Sets the source channel from word 2; an outcome when the command must
// first be completed or another one run.
std::optional<Outcome> chooseSource(MonitorState& m) {
    if (wordBlank(m, 2)) {
        m.sourceChannel = sysinf.drUnit;
        return std::nullopt;
    }
    if (wordBegins(m, 2, "FIL")) return fileSource(m);
    if (wordBegins(m, 2, "TER")) {
        m.sourceChannel = sysinf.inUnit;
        return std::nullopt;
    }
    return addSourceWord(m);
}

Outcome walk(MonitorState& m) {
    for (LoadParameter p : kChain) {
        if (std::optional<Outcome> end = loadParameter(m, p)) return *end;
    }
    return Outcome::Done;
}

void clearForAll() {
    for (int r = row::maxNFE; r <= row::finDifSet; ++r) E4DataSet.iStat(r) = 0;
    E4DataSet.iStat(row::bLSet) = 0;
    E4DataSet.iStat(row::bUSet) = 0;
}

// Word 3 names nothing LOAD knows.
Outcome unknownParameter(MonitorState& m) {
    if (!interactive()) return illegalCommand(m);
    helpSection("NAMES");
    std::string reply = askReply("Please enter the last command once again", "", sysinf.CursorPosition);
    setLine(m, reply);
    return Outcome::Rewrite;
}

Outcome loadByKey(MonitorState& m) {
    if (wordBegins(m, 3, "AL")) {
        clearForAll();
        return walk(m);
    }
    if (wordBegins(m, 3, "UN")) return walk(m);
    for (const ParameterKey& k : kKeys) {
        if (!wordBegins(m, 3, k.key)) continue;
        if (!parameterUsed(k.parameter)) return loadParameter(m, k.parameter).value_or(Outcome::Done);
        // The element is cleared so that the parameter is loaded; a load
        // that does not end gives it back, so a failure leaves the data
        // set as it was.
        const int old = E4DataSet.iStat(k.element);
        E4DataSet.iStat(k.element) = 0;
        Outcome outcome = loadParameter(m, k.parameter).value_or(Outcome::Done);
        if (outcome != Outcome::Done) E4DataSet.iStat(k.element) = old;
        return outcome;
    }
    if (wordBegins(m, 3, "EX")) return Outcome::Clear;
    return unknownParameter(m);
}

}  // namespace

Outcome E4CmdLoad(MonitorState& m) {
    for (int n = 2; n <= 4; ++n) {
        if (wordBegins(m, n, "HE")) {
            helpSection("LOAD");
            helpSection("NAMES");
            return Outcome::Done;
        }
    }
    if (std::optional<Outcome> end = chooseSource(m)) return *end;
    return loadByKey(m);
}
