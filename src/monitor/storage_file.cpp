// The fields of a data set on the storage file, their labels, and the head
// shared by SAVE and RECOVER.
#include "monitor/storage_file.h"

#include "core/console_layer.h"
#include "core/string_tools.h"
#include "core/sysinf.h"
#include "monitor/command_words.h"
#include "monitor/help_sections.h"
#include "platform/units.h"
#include "textfile/line_splitters.h"

namespace {

StorageField intField(std::string_view name, bool x, int* a, int n) { return {name, x, a, nullptr, 1, 1, n}; }
StorageField realField(std::string_view name, bool x, double* a, int n) { return {name, x, nullptr, a, 1, 1, n}; }
// n rows of n values of a matrix with leading dimension 128, row after row.
StorageField matrixField(std::string_view name, double* a, int n) { return {name, false, nullptr, a, kMaxVar, n, n}; }

bool isTerminalChannel(int channel) { return channel < 1 || unit::isTerminal(channel); }

// Word n holds "FILE=name": the name goes to `file` and the word is blanked.
bool takeFileWord(MonitorState& m, int n, std::string& file) {
    std::string first(static_cast<std::size_t>(kWordWidth), ' ');
    std::string second(static_cast<std::size_t>(kWordWidth), ' ');
    int count = 0;
    int status = 0;
    R02CLS2(wordText(m, n), first, second, count, status);
    if (status != 0 || count != 2 || !R02PFX(first, "F", 1)) return false;
    file = trimmedBoth(second);
    setWord(m, n, "");
    return true;
}

// The channel of the storage file: the one in its status row unless that is
// none, the terminal, or a channel the monitor reads commands or data from
// or writes data on.
// The status row itself is left alone, so that a command that fails changes
// nothing.
int storageChannel() {
    const int channel = E4DataSet.iStat(row::saveChannel);
    if (isTerminalChannel(channel) || channel == sysinf.crUnit || channel == sysinf.drUnit ||
        channel == sysinf.dwUnit) {
        return channelTable.SaveFileUnit;
    }
    return channel;
}

}  // namespace

std::string trimmedBoth(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return "";
    return std::string(text.substr(first, static_cast<std::size_t>(R02LEN(text)) - first));
}

std::vector<StorageField> storageFields(E4DataSetRecord& d, StoredChannels& ch, int n) {
    return {
        intField("NVAR", true, &d.nVar(), 1),
        intField("crUnit", false, &ch.crUnit, 1),
        intField("drUnit", false, &ch.drUnit, 1),
        intField("dwUnit", false, &ch.dwUnit, 1),
        intField("MODEE4", false, &ch.MODEE4, 1),
        intField("iStat", false, d.iStat.data(), kStatRows),
        intField("iSaved", false, d.iSaved.data(), 10),
        intField("iFlag", false, &d.iFlag, 1),
        realField("xStart", true, d.xStart.data(), n),
        realField("xScale", true, d.xScale.data(), n),
        intField("iFixer", true, d.iFixer.data(), n),
        realField("BL", true, d.bL.data(), n),
        realField("BU", true, d.bU.data(), n),
        realField("xEnd", false, d.xEnd.data(), n),
        realField("direct", false, d.direct.data(), n),
        realField("gStart", false, d.gStart.data(), n),
        realField("gEnd", false, d.gEnd.data(), n),
        realField("deltaX", false, d.deltaX.data(), n),
        realField("deltaG", false, d.deltaG.data(), n),
        realField("deltaXn", false, &d.deltaXn, 1),
        realField("xStep", false, d.xStep.data(), n),
        realField("stpMax", false, d.stpMax.data(), n),
        realField("finDif", false, d.finDif.data(), n),
        realField("rXTol", false, d.rXTol.data(), n),
        realField("deviat", false, d.deviat.data(), n),
        intField("iAux1", false, d.iAux1.data(), n),
        realField("aux1", false, d.aux1.data(), n),
        realField("aux2", false, d.aux2.data(), n),
        realField("aux3", false, d.aux3.data(), n),
        realField("aux4", false, d.aux4.data(), n),
        realField("rSaved", false, d.rSaved.data(), 10),
        realField("Hdiag", false, d.Hdiag.data(), 2 * n + 1),
        matrixField("Hesse", d.Hesse.data(), n),
        matrixField("V_eigen", d.V_eigen.data(), n),
        realField("R_eigen", false, d.R_eigen.data(), n),
        realField("fStart", false, &d.fStart, 1),
        realField("fEnd", false, &d.fEnd, 1),
        realField("deltaF", false, &d.deltaF, 1),
        realField("rFTol", false, &d.rFTol, 1),
        realField("tolScl", false, &d.tolScl, 1),
        realField("hCond", false, &d.hCond, 1),
        realField("temper", false, &d.temper, 1),
        realField("Tsced", false, &d.Tsced, 1),
        realField("FrlErr", false, &d.FrlErr, 1),
    };
}

std::string fieldLabel(std::string_view marker, std::string_view name) {
    return std::string(marker) + " ~~~~~ " + std::string(name) + ":";
}

StorageHead storageCommandHead(MonitorState& m, std::string_view section) {
    StorageHead head;
    E4DataSetRecord& d = E4DataSet;
    if (firstLetter(m, 2) == 'H' || firstLetter(m, 3) == 'H' || firstLetter(m, 4) == 'H') {
        write(sysinf.outUnit,
              "(4X,'Second-level command enters symbolic name of an',' external file.',/,"
              "' No command means the default',' file name \"',A,'\".')",
              trimmedBoth(d.svName));
        helpSection(section);
        return head;
    }
    head.file = trimmedBoth(d.svName);
    if (!takeFileWord(m, 2, head.file)) takeFileWord(m, 3, head.file);
    E04MES("Storage file name is \"" + head.file + "\"");
    if (interactive() && wordBlank(m, 2) && askYesNo("Continue?", "Y", 0) == 'N') {
        if (section == "RECOVER") {
            sysinf.crUnit = sysinf.inUnit;
            head.outcome = Outcome::Clear;
        }
        return head;
    }
    head.channel = storageChannel();
    head.proceed = true;
    return head;
}

bool storageXForm(const MonitorState& m) {
    return firstLetter(m, 2) == 'X' || (wordBlank(m, 2) && firstLetter(m, 3) == 'X');
}

void writeStorageFailure(int code) {
    write(sysinf.outUnit, "(A)", "");
    write(sysinf.outUnit, "(1X,A,' -E- FAILURE WITH ERROR CODE ',I5)", "E4MON1", code);
    write(sysinf.outUnit, "(A)", "");
}
