// Listings of arrays and vectors: I5WRA1 (real array), I5WIA1 (integer
// array) and I05WMD1 (a real vector as a staircase).
#include "core/console_layer.h"
#include "platform/units.h"
#include "textfile/prompts.h"

#include <string>

namespace {

// Title and rows of an array, each row by `rowFormat`, an empty line behind
// each row.  A failed write is reported with `tag` and ends the listing.
template <class T>
void writeArray(int channel, const T* array, int MD, int m, int n, std::string_view title,
                std::string_view rowFormat, std::string_view tag, int& status) {
    const int u = writerChannel(channel);
    I05LINE(channel, title, status);
    for (int i = 1; i <= m && status == 0; ++i) {
        FmtItems row;
        for (int j = 1; j <= n; ++j) {
            row.emplace_back(array[static_cast<std::size_t>((j - 1) * MD + (i - 1))]);
        }
        status = writeItems(u, rowFormat, row);
        if (status == 0) status = write(u, "()");
    }
    if (status != 0) I05ERR(tag, status);
}

}  // namespace

void I5WRA1(int channel, const double* array, int MD, int m, int n, std::string_view title,
            int& status) {
    writeArray(channel, array, MD, m, n, title, "(5(1P,G14.6))", "I5WRA1", status);
}

void I5WIA1(int channel, const int* array, int MD, int m, int n, std::string_view title,
            int& status) {
    writeArray(channel, array, MD, m, n, title, "(10(1X,I6))", "I5WIA1", status);
}

void I05WMD1(int channel, const double* vector, int n) {
    const int u = writerChannel(channel);
    int io = write(u, "()");
    int run = 1;  // blanks in front of the entry: 1, 4, 7, ... 55, then 1 again
    for (int k = 0; k < n && io == 0; ++k) {
        io = write(u, "(A,1P,G14.6)", std::string(static_cast<std::size_t>(run), ' '), vector[k]);
        run = run >= 55 ? 1 : run + 3;
    }
    if (io == 0) io = write(u, "()");
    if (io != 0) I05ERR("I05WMD1", io);
}
