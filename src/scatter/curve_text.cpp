// The text data reader LOADATF: the scan for the run of numeric lines, the
// header line, the free-form read of the columns and the "SAS" filter.
#include "scatter/measured_curve.h"
#include "scatter/measured_curve_steps.h"

#include "core/console_layer.h"
#include "core/machine_constants.h"
#include "platform/list_directed_read.h"
#include "platform/units.h"
#include "core/string_tools.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// Where the data begin: the record index (0-based) of the run's first line
// and its number of words; words 0 when no run of three lines was found.
struct DataRun {
    int start = 0;
    int words = 0;
    int readStatus = 0;  // a read failure during the scan
};


std::string withoutComment(const std::string& line) {
    return line.substr(0, line.find('!'));
}

// Number of words when every word is a number and there are at least two;
// 0 for a line that is no data line.
int numericWords(std::string_view line) {
    const std::vector<std::string> words = separatedWords(line);
    if (words.size() < 2) return 0;
    for (const std::string& w : words) {
        double v = 0.0;
        if (listReadReal(w, v) != 0) return 0;
    }
    return static_cast<int>(words.size());
}

DataRun scanForRun(int channel) {
    DataRun run;
    int runLength = 0;
    std::string line;
    for (int index = 0;; ++index) {
        const int status = unit::readRecord(channel, line);
        if (status != 0) {
            if (status > 0) run.readStatus = status;
            break;
        }
        const std::string text = withoutComment(line);
        if (R02LEN(text) < 1) continue;
        const int words = numericWords(text);
        if (words == 0) {
            runLength = 0;
        } else if (runLength > 0 && words == run.words) {
            ++runLength;
        } else {
            run.start = index;
            run.words = words;
            runLength = 1;
        }
        if (runLength == 3) return run;
    }
    run.words = 0;
    return run;
}

bool hasWord(std::string_view mode, std::string_view key) {
    for (const std::string& w : separatedWords(mode))
        if (R02EQ(w, key, 1)) return true;
    return false;
}

// The first non-blank line of the header, read as it stands.  Returns the
// line number of the first numeric line of the header (0 for none) and
// counts them in `numeric`.
int headerLine(int channel, int headerLines, std::string_view name, std::string& header, int& numeric) {
    const size_t width = header.empty() ? 80 : header.size();
    std::string found;
    std::string line;
    int first = 0;
    numeric = 0;
    for (int k = 0; k < headerLines; ++k) {
        if (unit::readRecord(channel, line) != 0) break;
        if (found.empty() && R02LEN(line) > 0) found = line;
        if (numericWords(withoutComment(line)) > 0 && numeric++ == 0) first = k + 1;
    }
    if (found.empty()) found = "? Data from " + std::string(name.substr(0, R02LEN(name)));
    found.resize(width, ' ');
    header = found;
    return first;
}

// What the free-form read of the data records met, for the notes of LOADATF.
struct ColumnRead {
    int n = 0;            // points delivered
    int zeroErrors = 0;   // records with an error of 0 (dropped or kept)
    int dropped = 0;      // records left out by the "SAS" filter or as not finite
    int shortLines = 0;   // points whose values ran over into the next line
    int firstShort = 0;   // line number of the first of them
    int stopLine = 0;     // the line that did not read as numbers
    std::string stopText;
    int linesAfter = 0;   // non-blank lines after the end of the read
};

// Non-blank lines left on the channel.
int linesLeft(int channel) {
    int count = 0;
    std::string line;
    while (unit::readRecord(channel, line) == 0)
        if (R02LEN(withoutComment(line)) > 0) ++count;
    return count;
}

// The free-form read of the data records, starting behind `firstLine` - 1
// lines.  Records with an error of 0 are dropped when dropZeroErrors is set.
ColumnRead readColumns(int channel, int firstLine, int nCols, bool sas, bool dropZeroErrors,
                       int limit, double* c1, double* c2, double* c3) {
    ColumnRead r;
    int line = firstLine - 1;  // the line last fetched
    int fetched = 0;           // non-blank lines fetched by one read
    int readStart = 0;         // the first of them
    std::string lastText;
    ListReader reader([&](std::string& record) {
        const int status = unit::readRecord(channel, record);
        if (status == 0) {
            ++line;
            lastText = record;
            record = withoutComment(record);
            std::replace(record.begin(), record.end(), ';', ' ');
            if (R02LEN(record) > 0 && fetched++ == 0) readStart = line;
        }
        return status;
    });
    std::vector<double> values(static_cast<size_t>(nCols));
    while (r.n < limit) {
        std::fill(values.begin(), values.end(), 0.0);
        fetched = 0;
        const int status = reader.readReals(values.data(), nCols);
        if (status == LIST_BAD_ITEM) {
            r.stopLine = line;
            r.stopText = lastText;
        }
        if (status != 0) break;
        if (fetched > 1 && r.shortLines++ == 0) r.firstShort = readStart;
        const double err = nCols >= 3 ? values[2] : 0.0;
        const bool finite = std::isfinite(values[0]) && std::isfinite(values[1]) && std::isfinite(err);
        if (!finite || (sas && (values[0] < 0.0 || values[1] == 0.0))) {
            ++r.dropped;
            continue;
        }
        if (sas && nCols >= 3 && err == 0.0) {
            ++r.zeroErrors;
            if (dropZeroErrors) continue;
        }
        c1[r.n] = values[0];
        c2[r.n] = values[1];
        if (c3 != nullptr) c3[r.n] = err;
        ++r.n;
    }
    if (r.n == limit || r.stopLine > 0) r.linesAfter = linesLeft(channel);
    return r;
}

// One line for each way the read lost or invented points, behind the
// rules' own messages: the curve is read as the rules say, and the user
// learns what that did to it.
void noteColumnRead(const ColumnRead& r, int nCols, int limit, const double* c1) {
    const std::string tag = "LOADATF --W- ";
    if (r.shortLines > 0)
        I05MES(tag + std::to_string(r.shortLines) + " line(s) with fewer than " + std::to_string(nCols) +
               " numbers, the first line " + std::to_string(r.firstShort) +
               ": their missing values are taken from the next line.");
    if (r.dropped > 0)
        I05MES(tag + std::to_string(r.dropped) + " line(s) with s < 0, I = 0, an error of 0 or a value that is not finite are left out.");
    if (r.stopLine > 0) {
        std::string text = r.stopText.substr(0, static_cast<size_t>(std::max(R02LEN(r.stopText), 0)));
        if (text.size() > 40) text = text.substr(0, 37) + "...";
        I05MES(tag + "Line " + std::to_string(r.stopLine) + " \"" + text + "\" is not numbers: the read ends there, " +
               std::to_string(r.linesAfter) + " non-blank line(s) after it are not read.");
    } else if (r.n == limit && r.linesAfter > 0) {
        I05MES(tag + "Only " + std::to_string(limit) + " points are read: the curve is cut at s = " +
               shortNumber(c1[r.n - 1]) + ", " + std::to_string(r.linesAfter) + " line(s) after it are not read.");
    }
}

void quotedMessage(std::string_view text, std::string_view name) {
    I05MES(std::string(text) + "\"" + std::string(name.substr(0, R02LEN(name))) + "\".");
}

}  // namespace

void LOADATF(std::string_view mode, int channel, std::string_view name, std::string& header,
             double* col1, double* col2, double* col3, int maxLines, int& n, int& nCols,
             int sortMode, int& status) {
    const bool sas = hasWord(mode, "SAS");
    const int limit = (n > 0) ? std::min(n, maxLines) : maxLines;
    status = 0;
    const std::string file(name.substr(0, std::max(R02LEN(name), 0)));
    if (unit::open(channel, file, {unit::Status::Old}) != 0) {
        quotedMessage("LOADATF --E- Cannot open data file ", name);
        n = 0;
        nCols = 0;
        status = -5;
        unit::close(channel);
        return;
    }
    const DataRun run = scanForRun(channel);
    if (run.words == 0) {
        if (run.readStatus != 0)
            quotedMessage("LOADATF --E- Error I/O with ", name);
        else
            I05MES("LOADATF --E- No data lines recognized.");
        n = 0;
        nCols = 0;
        status = run.readStatus != 0 ? -6 : -1;
        unit::close(channel);
        return;
    }
    nCols = run.words;
    const int headerLines = (sas && run.start == 0) ? 1 : run.start;
    unit::rewind(channel);
    int numericHeader = 0;
    const int firstNumeric = headerLine(channel, headerLines, name, header, numericHeader);
    ColumnRead read = readColumns(channel, headerLines + 1, nCols, sas, true, limit, col1, col2, col3);
    if (read.n == 0 && read.zeroErrors > 0) {
        // An error column of zeros only is a column of no errors: the
        // points are kept and their errors estimated by the caller.
        unit::rewind(channel);
        headerLine(channel, headerLines, name, header, numericHeader);
        read = readColumns(channel, headerLines + 1, nCols, sas, false, limit, col1, col2, col3);
    } else if (read.zeroErrors > 0) {
        read.dropped += read.zeroErrors;  // points with an error of 0 are left out
    }
    n = read.n;
    unit::close(channel);
    if (n == 0) {
        quotedMessage("LOADATF --E- Error I/O with ", name);
        status = -6;
        return;
    }
    if (sas && run.start == 0) {
        I05MES("LOADATF --W- No header line: the first data line is taken as the header, its point is not read.");
    } else if (numericHeader > 0) {
        I05MES("LOADATF --W- " + std::to_string(numericHeader) + " numeric line(s) before the data, the first line " +
               std::to_string(firstNumeric) + ", are read as header.");
    }
    noteColumnRead(read, nCols, limit, col1);
    if (sortMode > 0 && n > 1) {
        const double tol = std::min(std::sqrt(X02RMDC(2)), 0.0001);
        const int before = n;
        SORTMER(col1, col2, col3, n, nCols, tol, sortMode, status);
        if (n < before)
            I05MES("LOADATF --W- " + std::to_string(before - n) +
                   " point(s) of nearly equal s are merged with their neighbours.");
    }
}
