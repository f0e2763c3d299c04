// Array readers I5LIA1 and I5LRA1 (terminal or keyed file) and the
// storage-file readers R02RDI and R02RDR.
#include "textfile/array_io.h"

#include "core/console_layer.h"
#include "core/sysinf.h"
#include "platform/list_directed_read.h"
#include "platform/units.h"
#include "textfile/keyed_reading.h"
#include "core/string_tools.h"

#include <vector>

namespace {

bool onTerminal(int channel) { return channel < 1 || unit::isTerminal(channel); }

int readValues(ListReader& reader, int* v, int count) { return reader.readInts(v, count); }
int readValues(ListReader& reader, double* v, int count) { return reader.readReals(v, count); }

// One free-form read of m * n values, row after row, into the column-major
// array.  Values not reached keep what they held.
template <class T>
int readRows(int channel, T* a, int MD, int m, int n) {
    std::vector<T> rows(static_cast<std::size_t>(m) * static_cast<std::size_t>(n));
    for (int i = 0; i < m; ++i)
        for (int j = 0; j < n; ++j) rows[static_cast<std::size_t>(i * n + j)] = a[j * MD + i];
    ListReader reader([channel](std::string& r) { return unit::readRecord(channel, r); });
    int io = readValues(reader, rows.data(), m * n);
    for (int i = 0; i < m; ++i)
        for (int j = 0; j < n; ++j) a[j * MD + i] = rows[static_cast<std::size_t>(i * n + j)];
    return io;
}

template <class T>
void readArray(std::string_view tag, std::string_view prompt, std::string_view label,
               std::string_view marker, std::string_view access, std::string_view fileName,
               int channel, T* a, int MD, int m, int n, int& changed, int& status) {
    status = 0;
    changed = 0;
    const bool terminal = onTerminal(channel);
    if (terminal) {
        I05ASK(prompt, sysinf.CursorPosition);
    } else {
        std::string line(256, ' ');
        I05FTSF(channel, label, marker, access, line, status);
        if (status != 0) return;
    }
    if (m < 1 || n < 1 || MD < m) {  // nothing that can be stored
        changed = 1;
        return;
    }
    int io = readRows(terminal ? sysinf.inUnit : channel, a, MD, m, n);
    changed = 1;
    std::string file(fileName.substr(0, static_cast<std::size_t>(R02LEN(fileName))));
    if (io == unit::IOSTAT_END) {
        if (terminal) unit::endOpenRecord(sysinf.outUnit);
        if (terminal) I05MES(std::string(tag) + " -E- END OF THE INPUT: NO VALUE WAS GIVEN!");
        else I05MES(std::string(tag) + " -E- PREMATURE END OF THE FILE \"" + file + "\" !");
        status = 2;
    } else if (io != 0) {
        if (!terminal) I05MES(std::string(tag) + " -E- ERROR AT THE READING FROM THE FILE \"" + file + "\"!");
        I05ERR(tag, io);
        status = 1;
    }
}

}  // namespace

void I5LIA1(std::string_view prompt, std::string_view label, std::string_view marker,
            std::string_view access, std::string_view fileName, int channel, int* a, int MD, int m,
            int n, int& changed, int& status) {
    readArray("I5LIA1", prompt, label, marker, access, fileName, channel, a, MD, m, n, changed, status);
}

void I5LRA1(std::string_view prompt, std::string_view label, std::string_view marker,
            std::string_view access, std::string_view fileName, int channel, double* a, int MD,
            int m, int n, int& changed, int& status) {
    readArray("I5LRA1", prompt, label, marker, access, fileName, channel, a, MD, m, n, changed, status);
}

void R02RDI(int channel, int* a, int MD, int m, int n, std::string_view label,
            std::string_view marker, int& status) {
    int changed = 0;
    status = 0;
    I5LIA1("", label, marker, "SEQ", unit::fileNameOf(channel), channel, a, MD, m, n, changed, status);
}

void R02RDR(int channel, double* a, int MD, int m, int n, std::string_view label,
            std::string_view marker, int& status) {
    int changed = 0;
    status = 0;
    I5LRA1("", label, marker, "SEQ", unit::fileNameOf(channel), channel, a, MD, m, n, changed, status);
}
