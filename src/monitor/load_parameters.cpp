// LOAD's parameter steps: loadParameter, parameterUsed, parameterName, the
// integer, scalar and vector loaders and the rules of maxITR, nVar, xStart, xScale, bounds, temper.
#include "monitor/load_check.h"
#include "monitor/load_steps.h"

#include "monitor/command_words.h"
#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "methods/method_table.h"
#include "core/sysinf.h"
#include "core/machine_constants.h"
#include "platform/units.h"
#include "textfile/array_io.h"
#include "textfile/line_splitters.h"
#include "textfile/number_text.h"
#include "textfile/prompts.h"
#include "core/string_tools.h"

#include <array>

namespace {

struct ParameterInfo {
    std::string_view name;
    int element;  // set element of iStat (the value itself for integers)
    int lowMethod, highMethod;  // methods that use it; 0, 0 for all
    int otherMethod;            // one more method that uses it, or 0
};

// Indexed by LoadParameter.
constexpr ParameterInfo kInfo[] = {
    {"maxNFE", row::maxNFE, 0, 0, 0},  {"maxITR", row::maxITR, 0, 0, 0},   {"nVar", row::nVar, 0, 0, 0},
    {"iFixer", row::nFree, 0, 0, 0},  {"xStart", row::xStartSet, 0, 0, 0},   {"xStep", row::xStepSet, 0, 0, 0},
    {"rXTol", row::rXTolSet, 0, 0, 0},   {"rFTol", row::rFTolSet, 0, 0, 0},    {"tolScl", row::tolSclSet, 1, 11, 0},
    {"deviat", row::deviatSet, 16, 17, 0}, {"hCond", row::hCondSet, 6, 11, 0},  {"FrlErr", row::FrlErrSet, 0, 0, 0},
    {"finDif", row::finDifSet, 1, 11, 0}, {"ARGUMENT BOUND", row::bLSet, 12, 12, 0}, {"stpMax", row::stpMaxSet, 0, 0, 0},
    {"xScale", row::xScaleSet, 0, 0, 0},  {"direct", row::directSet, 0, 0, 0},   {"temper", row::temperSet, 17, 18, 0},
    {"NtriesT", row::NtriesT, 17, 18, 0}, {"Tsced", row::TscedSet, 17, 18, 0},
};

const ParameterInfo& info(LoadParameter p) { return kInfo[static_cast<int>(p)]; }

// Loads a real array of `extent` entries (1 for a scalar) into `target`
// from the words `first` on.  The values go to a copy first, so that a
// failing read stores nothing.
std::optional<Outcome> loadReals(MonitorState& m, std::string_view name, int element,
                                 double* target, int extent, int first) {
    std::array<double, kMaxVar> copy{};
    for (int i = 0; i < extent; ++i) copy[static_cast<std::size_t>(i)] = target[i];
    std::array<std::string, kWordCount> words = m.words;
    int changed = 0;
    int status = 0;
    I5LRA2(copy.data(), kMaxVar, extent, 1, name, kLoadMarker, iStatComment(element), words.data(),
           kWordCount, first, kCommandDelimiters, E4DataSet.iStat(element), m.sourceChannel,
           sourceFileName(m), kLoadAccess, sysinf.MODEE4, changed, status);
    m.changedFlag = changed;
    if (status != 0) return failedCommand(m);
    if (changed == 0) return std::nullopt;
    for (int i = 0; i < extent; ++i) target[i] = copy[static_cast<std::size_t>(i)];
    E4DataSet.iStat(element) = 1;
    return std::nullopt;
}

// The step of a vector of nVar entries: the nVar prerequisite, word 4
// "ALL" when blank, then the load.
std::optional<Outcome> loadVector(MonitorState& m, std::string_view name, int element, double* target) {
    if (std::optional<Outcome> pre = needVariables(m)) return pre;
    if (wordBlank(m, 4)) setWord(m, 4, "ALL");
    return loadReals(m, name, element, target, E4DataSet.nVar(), 4);
}

// A real scalar: only loaded when its set element is clear.
std::optional<Outcome> loadScalar(MonitorState& m, std::string_view name, int element, double& target,
                                  int word) {
    if (E4DataSet.iStat(element) != 0) return std::nullopt;
    return loadReals(m, name, element, &target, 1, word);
}

// An integer value by I5LIN1 from word `word`.  The value is stored only
// when the load succeeds.
std::optional<Outcome> loadInteger(MonitorState& m, std::string_view name, int element, int& value,
                                   int word) {
    int copy = value;
    int changed = 0;
    int status = 0;
    I5LIN1(copy, name, kLoadMarker, iStatComment(element), m.word(word), kLoadAccess, m.sourceChannel,
           sourceFileName(m), sysinf.MODEE4, changed, status);
    m.changedFlag = changed;
    if (status != 0) return failedCommand(m);
    value = copy;
    return std::nullopt;
}

// maxITR; the methods that count tries rather than iterations take it as
// maxNFE too.
std::optional<Outcome> loadMaxItr(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    if (std::optional<Outcome> end = loadInteger(m, "maxITR", row::maxITR, d.iStat(row::maxITR), 4)) return end;
    const MethodRow& method = methodTableRow(d.iStat(row::methodRunning));
    if (!method.countsTries) return std::nullopt;
    d.iStat(row::maxNFE) = d.iStat(row::maxITR);
    if (d.iStat(row::messageLevel) > 0) {
        E04MES("The method \"" + std::string(method.text) + "\"");
        E04MES("assumes the use of  maxNFE  rather than  maxITR.");
        E04MES("maxNFE  will now be set equal to  maxITR.");
    }
    return std::nullopt;
}

// nVar, loaded until it lies in 1 to 128.
std::optional<Outcome> loadNVar(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    int word = 4;
    while (true) {
        int value = d.nVar();
        if (std::optional<Outcome> end = loadInteger(m, "nVar", row::nVar, value, word)) return end;
        if (value >= 1 && value <= kMaxVar) {
            d.nVar() = value;
            E4RST1("ALL");
            d.FrlErr = X02RMDC(2);
            return std::nullopt;
        }
        E04MES("NUMBER OF VARIABLES = ( " + std::to_string(value) + " ) IS OUTSIDE OF PERMITTED RANGE!");
        d.nVar() = 0;
        // A file would give the same value again: only the terminal is asked anew.
        const bool fromTerminal = m.sourceChannel < 1 || unit::isTerminal(m.sourceChannel);
        if (!interactive() || !fromTerminal) return failedCommand(m);
        setWord(m, 4, "");  // the next value is asked for
    }
}

// xStart: a new point drops what was known at the old one.
std::optional<Outcome> loadXStart(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    if (std::optional<Outcome> end = loadVector(m, "xStart", row::xStartSet, d.xStart.data())) return end;
    if (m.changedFlag == 0) return std::nullopt;
    d.fStart = 0;
    m.searchMade = m.startValueKnown = false;
    d.xEnd = d.xStart;
    d.fEnd = 0;
    E4RST1(" ");
    d.iStat(row::xStartSet) = 1;
    d.iStat(row::fSet) = 0;
    return std::nullopt;
}

// xScale: arguments held scaled are unscaled by the old factors and the
// free entries of xStart scaled by the new ones.
std::optional<Outcome> loadXScale(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    Vec1<double, kMaxVar> old = d.xScale;
    if (std::optional<Outcome> end = loadVector(m, "xScale", row::xScaleSet, d.xScale.data())) return end;
    if (m.changedFlag == 0) return std::nullopt;
    d.iStat(row::xScaleSet) = 1;
    if (d.iStat(row::xScaled) == 0) return std::nullopt;
    for (int i = 1; i <= kMaxVar; ++i) {
        d.xStart(i) /= old(i);
        d.xEnd(i) /= old(i);
    }
    for (int i = 1; i <= d.nVar(); ++i) {
        if (d.iFixer(i) != 0) d.xStart(i) *= d.xScale(i);
    }
    return std::nullopt;
}

// bL when it is not set, then bU when it is not set, from the same words.
std::optional<Outcome> loadBounds(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    if (std::optional<Outcome> pre = needVariables(m)) return pre;
    if (wordBlank(m, 4)) setWord(m, 4, "ALL");
    if (d.iStat(row::bLSet) == 0) {
        if (std::optional<Outcome> end = loadReals(m, "bL", row::bLSet, d.bL.data(), d.nVar(), 4)) return end;
    }
    if (d.iStat(row::bUSet) == 0) {
        if (std::optional<Outcome> end = loadReals(m, "bU", row::bUSet, d.bU.data(), d.nVar(), 4)) return end;
    }
    return std::nullopt;
}

// temper from word 4, NtriesT from word 5, Tsced from word 6.
std::optional<Outcome> loadAnnealing(MonitorState& m) {
    E4DataSetRecord& d = E4DataSet;
    if (std::optional<Outcome> end = loadScalar(m, "temper", row::temperSet, d.temper, 4)) return end;
    if (std::optional<Outcome> end = loadInteger(m, "NtriesT", row::NtriesT, d.iStat(row::NtriesT), 5)) return end;
    if (!wordBlank(m, 6)) d.iStat(row::TscedSet) = 0;  // a value on the line replaces the old one
    return loadScalar(m, "Tsced", row::TscedSet, d.Tsced, 6);
}

// The temperature schedule as it stands, to be put back when a value is
// refused.
struct Schedule {
    double temper, Tsced;
    int temperSet, NtriesT, TscedSet;
};

Schedule scheduleNow() {
    const E4DataSetRecord& d = E4DataSet;
    return {d.temper, d.Tsced, d.iStat(row::temperSet), d.iStat(row::NtriesT), d.iStat(row::TscedSet)};
}

void putBack(const Schedule& s) {
    E4DataSetRecord& d = E4DataSet;
    d.temper = s.temper;
    d.Tsced = s.Tsced;
    d.iStat(row::temperSet) = s.temperSet;
    d.iStat(row::NtriesT) = s.NtriesT;
    d.iStat(row::TscedSet) = s.TscedSet;
}

std::string realText(double v) {
    std::string text(32, ' ');
    int len = 0;
    int err = 0;
    R02R2C1(v, text, 1, 3, len, 2, 1, err);
    return text.substr(0, static_cast<std::size_t>(R02LEN(text)));
}

// temper, NtriesT or Tsced, loaded and then checked: the temperature falls
// by the factor Tsced, which must be above 0, every NtriesT tries, which
// must be at least 1 once the temperature is set (0 is "not given"
// otherwise).  A refused value stores nothing: the schedule is put back.
std::optional<Outcome> loadSchedule(MonitorState& m, LoadParameter p) {
    E4DataSetRecord& d = E4DataSet;
    const Schedule before = scheduleNow();
    std::optional<Outcome> end;
    if (p == LoadParameter::Temper) end = loadAnnealing(m);
    if (p == LoadParameter::NtriesT) end = loadInteger(m, "NtriesT", row::NtriesT, d.iStat(row::NtriesT), 4);
    if (p == LoadParameter::Tsced) end = loadScalar(m, "Tsced", row::TscedSet, d.Tsced, 4);
    if (end) return end;
    const int tries = d.iStat(row::NtriesT);
    if (p != LoadParameter::NtriesT && d.iStat(row::TscedSet) != 0 && d.Tsced <= 0.0) {
        E04MES("Tsced = ( " + realText(d.Tsced) + " ) IS OUTSIDE OF PERMITTED RANGE!");
        E04MES("The temperature schedule factor must be above 0; nothing is stored.");
    } else if (p != LoadParameter::Tsced && (tries < 0 || (tries == 0 && d.iStat(row::temperSet) != 0))) {
        E04MES("NtriesT = ( " + std::to_string(tries) + " ) IS OUTSIDE OF PERMITTED RANGE!");
        E04MES("The number of tries per temperature must be at least 1; nothing is stored.");
    } else {
        return std::nullopt;
    }
    putBack(before);
    return failedCommand(m);
}

}  // namespace

std::string_view parameterName(LoadParameter p) { return info(p).name; }

bool parameterUsed(LoadParameter p) {
    const ParameterInfo& in = info(p);
    if (in.lowMethod == 0) return true;
    int method = E4DataSet.iStat(row::methodRunning);
    return method >= in.lowMethod && method <= in.highMethod;
}

std::string sourceFileName(const MonitorState& m) {
    std::string name = unit::fileNameOf(m.sourceChannel);
    if (!name.empty()) return name;
    const std::string& dr = E4DataSet.drName;
    return dr.substr(0, static_cast<std::size_t>(R02LEN(dr)));
}

std::optional<Outcome> needVariables(MonitorState& m) {
    if (E4DataSet.nVar() != 0) return std::nullopt;
    setLine(m, "LOAD,,NVAR");
    return Outcome::Prerequisite;
}

std::optional<Outcome> loadParameter(MonitorState& m, LoadParameter p) {
    E4DataSetRecord& d = E4DataSet;
    if (!parameterUsed(p)) {
        E4NUS1(parameterName(p));
        return std::nullopt;
    }
    switch (p) {
        case LoadParameter::MaxNFE: return loadInteger(m, "maxNFE", row::maxNFE, d.iStat(row::maxNFE), 4);
        case LoadParameter::MaxITR: return loadMaxItr(m);
        case LoadParameter::NVar: return loadNVar(m);
        case LoadParameter::IFixer: return loadFixer(m);
        case LoadParameter::XStart: return loadXStart(m);
        case LoadParameter::XStep: return loadVector(m, "xStep", row::xStepSet, d.xStep.data());
        case LoadParameter::RXTol: return loadVector(m, "rXTol", row::rXTolSet, d.rXTol.data());
        case LoadParameter::RFTol: return loadScalar(m, "rFTol", row::rFTolSet, d.rFTol, 4);
        case LoadParameter::TolScl: return loadScalar(m, "tolScl", row::tolSclSet, d.tolScl, 4);
        case LoadParameter::Deviat: return loadVector(m, "deviat", row::deviatSet, d.deviat.data());
        case LoadParameter::HCond: return loadScalar(m, "hCond", row::hCondSet, d.hCond, 4);
        case LoadParameter::FrlErr: return loadScalar(m, "FrlErr", row::FrlErrSet, d.FrlErr, 4);
        case LoadParameter::FinDif: return loadVector(m, "finDif", row::finDifSet, d.finDif.data());
        case LoadParameter::Bounds: return loadBounds(m);
        case LoadParameter::StpMax: return loadVector(m, "stpMax", row::stpMaxSet, d.stpMax.data());
        case LoadParameter::XScale: return loadXScale(m);
        case LoadParameter::Direct: return loadVector(m, "direct", row::directSet, d.direct.data());
        case LoadParameter::Temper:
        case LoadParameter::NtriesT:
        case LoadParameter::Tsced: return loadSchedule(m, p);
    }
    return std::nullopt;
}
