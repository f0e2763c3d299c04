// SAVE: adds the data set, or in the X form its starting point, at the end
// of the storage file.  The file is never rewritten: it is read to its end
// and the new data set goes behind what it holds.
#include "monitor/command_words.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "monitor/storage_file.h"
#include "platform/clock.h"
#include "platform/units.h"
#include "textfile/array_io.h"
#include "textfile/file_spec.h"

namespace {

constexpr int kHeaderWidth = 80;
constexpr std::string_view kIncomplete = "DATA SET IS INCOMPLETE FOR THE COMPUTATION TO PERFORM";

// The closing of a failed SAVE: the failure line for a read or write
// failure, the channel closed, the messages.
Outcome saveFailure(MonitorState& m, int channel, int code, bool transfer) {
    if (transfer) writeStorageFailure(code);
    unit::close(channel);
    if (code != 0) {
        m.changedFlag = 1;
        E04MES(" ERROR: SAVE FAILURE");
    }
    return failedCommand(m);
}

// Reads the file to its end; 0 or the code of a read failure.
int readToEnd(int channel) {
    std::string record;
    int io = 0;
    while ((io = unit::readRecord(channel, record)) == 0) {
    }
    return io == unit::IOSTAT_END ? 0 : io;
}

// The comment of the data set: word 3 unless it is blank or the X of the
// X form, else word 4.
std::string commentOf(const MonitorState& m) {
    if (!wordBlank(m, 3) && firstLetter(m, 3) != 'X') return wordText(m, 3);
    return wordText(m, 4);
}

// Lines 1 to 3 of a data set; the data marker is the last of them, read
// back from the file.  Returns 0 or the code of the failure.
int writeHead(int channel, const std::string& comment, std::string& marker) {
    int io = write(channel, "(A)", padded(" *** NEW DATA SET ***", kHeaderWidth));
    if (io == 0) io = write(channel, "(1X,A11,' time ',A8)", dateText(), timeText());
    if (io == 0 && !comment.empty()) io = write(channel, "(A)", padded(comment, kWordWidth));
    if (io == 0) io = unit::backspace(channel);
    std::string record;
    if (io == 0) io = unit::readRecord(channel, record);
    marker = trimmedBoth(record);
    return io;
}

// The fields of the table (the X form only those it holds), then the name
// blocks of the full form.  Returns 0 or the code of the failure.
int writeFields(int channel, const std::string& marker, bool xForm) {
    E4DataSetRecord& d = E4DataSet;
    StoredChannels ch{sysinf.crUnit, sysinf.drUnit, sysinf.dwUnit, sysinf.MODEE4};
    for (const StorageField& f : storageFields(d, ch, d.nVar())) {
        if (xForm && !f.xForm) continue;
        int status = 0;
        const std::string label = fieldLabel(marker, f.name);
        if (f.ints) {
            R2WIA1(channel, f.ints, f.MD, f.m, f.n, label, status);
        } else {
            R02WRA1(channel, f.reals, f.MD, f.m, f.n, label, status);
        }
        if (status != 0) return status;
    }
    if (xForm) return 0;
    return write(channel,
                 "(1X,A,' ~~~~~ crName:',/,A,/,1X,A,' ~~~~~ drName:',/,A,/,1X,A,' ~~~~~ dwName:',/,A,/)",
                 marker, padded(trimmedBoth(d.crName), kFileNameWidth), marker,
                 padded(trimmedBoth(d.drName), kFileNameWidth), marker,
                 padded(trimmedBoth(d.dwName), kFileNameWidth));
}

}  // namespace

Outcome E4CmdSave(MonitorState& m) {
    StorageHead head = storageCommandHead(m, "SAVE");
    if (!head.proceed) return head.outcome;
    E4DataSetRecord& d = E4DataSet;
    const int channel = head.channel;
    std::string name = padded(head.file, kFileNameWidth);
    int result = 0;
    Z1OPN1(channel, name, "WRITE", "UNKNOWN", result);
    d.svName = padded(trimmedBoth(name), kFileNameWidth);
    if (result != 0) return saveFailure(m, channel, result, false);
    if (interactive()) write(sysinf.outUnit, "(A)", " ==> Wait, please");
    if (int io = readToEnd(channel)) return saveFailure(m, channel, io, true);
    const int n = d.nVar();
    if (n < 1 || n > kMaxVar) {
        unit::close(channel);
        E04MES(n < 1 ? std::string("ERROR: ZERO NUMBER OF PROBLEM VARIABLES!")
                     : "ERROR: WRONG NUMBER OF VARIABLES: " + std::to_string(n) + "!");
        m.errorText = kIncomplete;
        return Outcome::ErrorExit;
    }
    std::string marker;
    if (int io = writeHead(channel, commentOf(m), marker)) return saveFailure(m, channel, io, true);
    E04MES("Data marker is:");
    E04MES("\"" + marker + "\"");
    E04MES("Please remember the identifier!");
    m.dataMarker = padded(marker, kLineWidth);
    if (int io = writeFields(channel, marker, storageXForm(m))) return saveFailure(m, channel, io, true);
    E04MES("Information has been saved on the file \"" + trimmedBoth(d.svName) + "\".");
    unit::close(channel);
    d.iStat(row::saveChannel) = sysinf.outUnit;
    return Outcome::Done;
}
