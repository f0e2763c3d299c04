// RECOVER: reads a data set back from the storage file, found by its data
// marker.  Everything is read into a copy of the data set first; only when
// the whole set has come through does the copy replace the data set, so a
// RECOVER that fails leaves the data set in memory exactly as it was.
#include "monitor/command_words.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/string_tools.h"
#include "core/sysinf.h"
#include "monitor/storage_file.h"
#include "platform/units.h"
#include "textfile/array_io.h"
#include "textfile/file_spec.h"

#include <algorithm>
#include <cctype>

namespace {

constexpr std::string_view kIncomplete = "DATA SET IS INCOMPLETE FOR THE COMPUTATION TO PERFORM";

// The data set being read; static, since it is as large as the data set.
E4DataSetRecord& scratchSet() {
    static E4DataSetRecord copy;
    return copy;
}

bool isTerminalChannel(int channel) { return channel < 1 || unit::isTerminal(channel); }

struct Recovery {
    MonitorState& m;
    int channel;
    std::string file;
    std::string marker;

    Outcome fail() {
        unit::close(channel);
        return failedCommand(m);
    }
    Outcome errorExit(std::string text) {
        unit::close(channel);
        m.errorText = std::move(text);
        return Outcome::ErrorExit;
    }
    int readInts(int* a, int n, std::string_view label) {
        int status = 0;
        R02RDI(channel, a, 1, 1, n, label, marker, status);
        return status;
    }
    int readReals(double* a, int n, std::string_view label) {
        int status = 0;
        R02RDR(channel, a, 1, 1, n, label, marker, status);
        return status;
    }
    std::string quotedFile() const { return "\"" + file + "\""; }

    Outcome xForm(int n);
    Outcome fullForm(int n);
    int readNames(E4DataSetRecord& c);
    bool reopenChannels(const StoredChannels& saved);
};

// The starting point, its scale factors, iFixer and the bounds.
Outcome Recovery::xForm(int n) {
    E4DataSetRecord& c = scratchSet();
    const E4DataSetRecord& d = E4DataSet;
    c = d;
    if (readReals(c.xStart.data(), n, "xStart") != 0) return fail();
    if (readReals(c.xScale.data(), n, "xScale") != 0) {
        E04MES("Argument scale factors not found on " + quotedFile());
        return fail();
    }
    E04MES("Argument scale factors recovered from " + quotedFile());
    if (readInts(c.iFixer.data(), n, "iFixer") != 0) std::fill_n(c.iFixer.data(), n, 1);
    E04MES("Coordinates of starting point recovered from " + quotedFile());
    const bool lower = readReals(c.bL.data(), n, "BL") == 0;
    if (!lower) c.bL = d.bL;
    if (lower) E04MES("Lower bounds recovered from " + quotedFile());
    const bool upper = readReals(c.bU.data(), n, "BU") == 0;
    if (!upper) c.bU = d.bU;
    if (upper) E04MES("Upper bounds recovered from " + quotedFile());
    unit::close(channel);
    E4DataSetRecord& t = E4DataSet;
    t = c;
    t.iStat(row::xScaleSet) = 1;
    t.fStart = 0;
    m.searchMade = m.startValueKnown = false;
    t.xEnd = t.xStart;
    t.fEnd = 0;
    t.iStat(row::fSet) = 0;
    t.iStat(row::xStartSet) = 1;
    E4RST1(" ");
    t.iStat(row::bLSet) = lower ? 1 : 0;
    t.iStat(row::bUSet) = upper ? 1 : 0;
    m.dataMarker = padded(marker, kLineWidth);
    return Outcome::Done;
}

// The letters of a text without white space, in upper case.
std::string squeezed(std::string_view text) {
    std::string out;
    for (char c : text) {
        if (!isWhiteChar(c)) out.push_back(static_cast<char>(std::toupper(static_cast<unsigned char>(c))));
    }
    return out;
}

// The name blocks: each a label line, checked, and the name.  0 or the
// code of the failure.
int Recovery::readNames(E4DataSetRecord& c) {
    std::string record;
    if (int io = unit::readRecord(channel, record)) return io;  // the empty line behind FrlErr
    std::string* names[3] = {&c.crName, &c.drName, &c.dwName};
    for (int k = 0; k < 3; ++k) {
        if (int io = unit::readRecord(channel, record)) return io;
        if (squeezed(record).find(squeezed(fieldLabel("", kNameTags[k]))) == std::string::npos) {
            return unit::IOERR_READ;
        }
        if (int io = unit::readRecord(channel, record)) return io;
        *names[k] = padded(record.substr(0, std::min<std::size_t>(record.size(), kFileNameWidth)), kFileNameWidth);
    }
    return 0;
}

// The data channels that were open at SAVE are opened again on their files;
// the terminal stands for a channel that was not.  False when a file could
// not be opened.
bool Recovery::reopenChannels(const StoredChannels& saved) {
    E4DataSetRecord& d = E4DataSet;
    bool fine = true;
    auto reopen = [&](int savedUnit, int& unitField, int& flag, std::string& name, int terminal, bool writing) {
        if (!isTerminalChannel(unitField) && unitField != savedUnit) unit::close(unitField);
        unitField = terminal;
        flag = 0;
        if (isTerminalChannel(savedUnit)) return;
        std::string field = padded(trimmedBoth(name), kFileNameWidth);
        int result = 0;
        Z1OPN1(savedUnit, field, writing ? "WRITE" : "READ", writing ? "UNKNOWN" : "OLD", result);
        if (result != 0) {
            fine = false;
            return;
        }
        name = padded(trimmedBoth(field), kFileNameWidth);
        unitField = flag = savedUnit;
        std::string record;
        while (writing && unit::readRecord(savedUnit, record) == 0) {
        }
    };
    reopen(saved.drUnit, sysinf.drUnit, d.iStat(row::dataFileOpen), d.drName, sysinf.inUnit, false);
    reopen(saved.dwUnit, sysinf.dwUnit, d.iStat(row::outputFileOpen), d.dwName, sysinf.outUnit, true);
    return fine;
}

// The whole data set.  The command channel and the dialogue mode stay those
// of the session: a RECOVER never takes the reading of commands away from
// the file or terminal that gave it.
Outcome Recovery::fullForm(int n) {
    E4DataSetRecord& c = scratchSet();
    const E4DataSetRecord& d = E4DataSet;
    c = d;
    c.nVar() = n;
    StoredChannels saved{sysinf.crUnit, sysinf.drUnit, sysinf.dwUnit, sysinf.MODEE4};
    std::vector<StorageField> fields = storageFields(c, saved, n);
    bool broken = false;
    int status = 0;
    for (std::size_t k = 1; k < fields.size(); ++k) {
        const StorageField& f = fields[k];
        status = 0;
        if (f.ints) {
            R02RDI(channel, f.ints, f.MD, f.m, f.n, f.name, marker, status);
        } else {
            R02RDR(channel, f.reals, f.MD, f.m, f.n, f.name, marker, status);
        }
        broken = broken || status > 0;  // found but not read: a cut or damaged field
    }
    if (status != 0 || broken) return fail();
    c.iStat(row::saveChannel) = channel;
    c.iStat(row::commandFileOpen) = d.iStat(row::commandFileOpen);
    c.nVar() = n;
    if (int io = readNames(c)) {
        writeStorageFailure(io);
        return fail();
    }
    E4DataSet = c;
    m.dataMarker = padded(marker, kLineWidth);
    E04MES("=== END OF RECOVERING");
    unit::close(channel);
    if (!reopenChannels(saved)) return failedCommand(m);
    return Outcome::Done;
}

// The marker: the first of words 2 to 4 that is neither blank nor the X of
// the X form, else the one of the last SAVE or RECOVER.
std::string markerOf(const MonitorState& m) {
    for (int n = 2; n <= 4; ++n) {
        if (!wordBlank(m, n) && firstLetter(m, n) != 'X') return wordText(m, n);
    }
    return trimmedBoth(m.dataMarker);
}

}  // namespace

Outcome E4CmdRecover(MonitorState& m) {
    StorageHead head = storageCommandHead(m, "RECOVER");
    if (!head.proceed) return head.outcome;
    E4DataSetRecord& d = E4DataSet;
    std::string name = padded(head.file, kFileNameWidth);
    int result = 0;
    Z1OPN1(head.channel, name, "READ", "OLD", result);  // a write-protected file can be recovered
    d.svName = padded(trimmedBoth(name), kFileNameWidth);
    if (result != 0) return failedCommand(m);
    Recovery r{m, head.channel, trimmedBoth(d.svName), markerOf(m)};
    const bool xForm = storageXForm(m);
    if (r.marker.empty()) return r.errorExit("ERROR: NO DATA MARKER SPECIFIED!");
    if (xForm && d.nVar() <= 0) return r.fail();
    int n = d.nVar();
    if (r.readInts(&n, 1, "NVAR") != 0 && !xForm) return r.fail();
    if ((d.nVar() != 0 && n != d.nVar()) || n < 0 || n > kMaxVar) {
        return r.errorExit("ERROR: WRONG NUMBER OF VARIABLES: " + std::to_string(n) + "!");
    }
    if (xForm) return r.xForm(n);
    if (n == 0) {
        E04MES("ERROR: ZERO NUMBER OF PROBLEM VARIABLES!");
        return r.errorExit(std::string(kIncomplete));
    }
    return r.fullForm(n);
}
