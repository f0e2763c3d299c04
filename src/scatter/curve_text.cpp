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

// The first non-blank line of the header, read as it stands.
void headerLine(int channel, int headerLines, std::string_view name, std::string& header) {
    const size_t width = header.empty() ? 80 : header.size();
    std::string found;
    std::string line;
    for (int k = 0; k < headerLines; ++k) {
        if (unit::readRecord(channel, line) != 0) break;
        if (found.empty() && R02LEN(line) > 0) found = line;
    }
    if (found.empty()) found = "? Data from " + std::string(name.substr(0, R02LEN(name)));
    found.resize(width, ' ');
    header = found;
}

// The free-form read of the data records: returns the points delivered.
// zeroErrors counts the records dropped for an error of 0 only; with
// dropZeroErrors false they are kept.
int readColumns(int channel, int nCols, bool sas, bool dropZeroErrors, int limit, double* c1,
                double* c2, double* c3, int& zeroErrors) {
    ListReader reader([channel](std::string& record) {
        const int status = unit::readRecord(channel, record);
        if (status == 0) {
            record = withoutComment(record);
            std::replace(record.begin(), record.end(), ';', ' ');
        }
        return status;
    });
    std::vector<double> values(static_cast<size_t>(nCols));
    int n = 0;
    while (n < limit) {
        std::fill(values.begin(), values.end(), 0.0);
        if (reader.readReals(values.data(), nCols) != 0) break;
        const double err = nCols >= 3 ? values[2] : 0.0;
        if (!std::isfinite(values[0]) || !std::isfinite(values[1]) || !std::isfinite(err))
            continue;
        if (sas && (values[0] < 0.0 || values[1] == 0.0)) continue;
        if (sas && nCols >= 3 && err == 0.0) {
            ++zeroErrors;
            if (dropZeroErrors) continue;
        }
        c1[n] = values[0];
        c2[n] = values[1];
        if (c3 != nullptr) c3[n] = err;
        ++n;
    }
    return n;
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
    headerLine(channel, headerLines, name, header);
    int zeroErrors = 0;
    n = readColumns(channel, nCols, sas, true, limit, col1, col2, col3, zeroErrors);
    if (n == 0 && zeroErrors > 0) {
        // An error column of zeros only is a column of no errors: the
        // points are kept and their errors estimated by the caller.
        unit::rewind(channel);
        headerLine(channel, headerLines, name, header);
        n = readColumns(channel, nCols, sas, false, limit, col1, col2, col3, zeroErrors);
    }
    unit::close(channel);
    if (n == 0) {
        quotedMessage("LOADATF --E- Error I/O with ", name);
        status = -6;
        return;
    }
    if (sortMode > 0 && n > 1) {
        const double tol = std::min(std::sqrt(X02RMDC(2)), 0.0001);
        SORTMER(col1, col2, col3, n, nCols, tol, sortMode, status);
    }
}
