// The binary frame format: TAVREAD over the header file, the data file of
// direct-access frames of 4-byte reals, the parameter file and the error file.
#include "scatter/measured_curve.h"

#include "core/console_layer.h"
#include "platform/list_directed_read.h"
#include "platform/units.h"
#include "textfile/prompts.h"
#include "core/string_tools.h"

#include <algorithm>
#include <vector>

namespace {

constexpr int kMaxParams = 256;

// What the header file tells.
struct FrameHeader {
    std::string title = std::string(60, ' ');
    int channels = 0;
    int frames = 0;
    std::string dataFile;
    bool hasParams = false;
    int paramCount = 0;
    int paramRecord = 0;
    std::string paramFile;
    bool hasErrors = false;
    std::string errorFile;
    int errorChannels = 0;  // line 7, when present
    int errorFrames = 0;
};

// Why the last read of a data set took no errors from an error frame.
std::string errorsNote;

std::string trimmed(std::string_view text) {
    return std::string(text.substr(0, static_cast<size_t>(std::max(R02LEN(text), 0))));
}

// A file named in the header lies beside the header file.
std::string besideHeader(std::string_view headerName, std::string_view file) {
    const std::string name = trimmed(headerName);
    const size_t slash = name.find_last_of('/');
    if (slash == std::string::npos || (!file.empty() && file[0] == '/')) return std::string(file);
    return name.substr(0, slash + 1) + std::string(file);
}

// One line of (10I8); blank fields are 0.  False when a field does not read.
bool readIntegerLine(int channel, int fields[10]) {
    std::string line;
    if (unit::readRecord(channel, line) != 0) return false;
    for (int k = 0; k < 10; ++k) {
        fields[k] = 0;
        if (line.size() <= static_cast<size_t>(8 * k)) continue;
        std::string field = trimmed(std::string_view(line).substr(8 * k, 8));
        field.erase(0, field.find_first_not_of(' '));
        if (field.empty()) continue;
        if (field.find_first_of(" ,/") != std::string::npos) return false;
        if (listReadInt(field, fields[k]) != 0) return false;
    }
    return true;
}

// A line of text whose first `width` characters name a file.
bool readNameLine(int channel, std::string& name) {
    std::string line;
    if (unit::readRecord(channel, line) != 0) return false;
    name = trimmed(std::string_view(line).substr(0, std::min<size_t>(line.size(), 10)));
    return !name.empty();
}

bool parseHeader(int channel, FrameHeader& h) {
    std::string line;
    if (unit::readRecord(channel, line) != 0) return false;
    h.title = line.substr(0, std::min<size_t>(line.size(), 60));
    h.title.resize(60, ' ');
    if (unit::readRecord(channel, line) != 0) return false;
    int f3[10];
    if (!readIntegerLine(channel, f3) || !readNameLine(channel, h.dataFile)) return false;
    h.channels = f3[0];
    h.frames = f3[1];
    // A frame of no channels, too many channels or no frames is no data set.
    if (h.channels < 1 || h.channels > kMaxFrameChannels || h.frames < 1) return false;
    if (f3[9] == 0) return true;
    int f5[10];
    if (!readIntegerLine(channel, f5) || !readNameLine(channel, h.paramFile)) return false;
    h.hasParams = f5[0] > 0;
    h.paramCount = f5[0];
    h.paramRecord = f5[1];
    if (f5[9] == 0) return true;
    int f7[10];
    if (!readIntegerLine(channel, f7) || !readNameLine(channel, h.errorFile)) return false;
    h.errorChannels = f7[0];
    h.errorFrames = f7[1];
    h.hasErrors = f7[0] == h.channels && f7[1] == h.frames;
    return true;
}

// A new file name from the terminal after a failure; false on a blank reply.
bool askAgain(std::string& name) {
    std::string reply(80, ' ');
    int length = 0;
    int status = 0;
    I05RSL(5, reply, length, "", status);
    if (status != 0 || length < 1) {
        writeList(-1, " TAVREAD: Input file not defined");
        return false;
    }
    name = trimmed(reply);
    return true;
}

// Steps 2 and 3: the header, asked again until it reads.
bool readHeader(int channel, std::string& name, FrameHeader& h) {
    for (;;) {
        h = FrameHeader{};
        bool good = unit::open(channel, trimmed(name), {unit::Status::Old}) == 0;
        good = good && parseHeader(channel, h);
        unit::close(channel);
        if (good) {
            write(-1, "(' Header file ',A,'  Nchannels ',I4,'  Nframes ',I4)", trimmed(name),
                  h.channels, h.frames);
            return true;
        }
        write(-1,
              "(' TAVREAD: error opening or reading header file  ',A10,/,"
              "' Enter the header file name <XNN000.ext>: ',$)",
              name);
        if (!askAgain(name)) return false;
    }
}

bool openDirect(int channel, const std::string& file, int recordBytes) {
    unit::OpenSpec spec{unit::Status::Old, unit::Access::Direct};
    spec.recordLength = recordBytes;
    return unit::open(channel, file, spec) == 0;
}

// Step 4: the data file, asked again until it opens.  After a record that
// did not read (readFailed) the file is refused first, so that a truncated
// file cannot be read over and over.
bool openDataFile(int channel, std::string& dataFile, int channels, bool readFailed) {
    while (readFailed || !openDirect(channel, dataFile, 4 * channels)) {
        readFailed = false;
        write(-1,
              "(' TAVREAD: error opening or reading data file  ',A10,/,"
              "' Enter the data file name <XNN001.ext>:',$)",
              dataFile);
        if (!askAgain(dataFile)) return false;
    }
    return true;
}

bool readWindow(int channel, int record, int channels, int first, int last, double* data) {
    std::vector<float> buffer(static_cast<size_t>(channels));
    if (unit::readDirect(channel, record, buffer.data(), channels) != 0) return false;
    for (int i = first; i <= last; ++i) data[i - first] = static_cast<double>(buffer[i - 1]);
    return true;
}

void warnNoErrors(const std::string& file) {
    writeList(-1, " TAVREAD --W- : statistical errors are not found, file  ", file);
}

// Step 6: the frame to read, asked when allowed.
void chooseFrame(int& frame, int nFrames, bool askFrame) {
    if (frame < nFrames) ++frame;
    if (askFrame) {
        I05ASKI(" Enter  the  frame  number", frame, "!", 60);
        if (frame > nFrames) writeList(-1, " Warning: the file contains only", nFrames, " frames!");
    }
    frame = std::clamp(frame, 1, nFrames);
}

void readParameter(int channel, const FrameHeader& h, const std::string& file, int frame,
                   double& param) {
    if (!openDirect(channel, file, 4 * h.paramCount)) return;
    const int count = std::min(h.paramCount, kMaxParams);
    std::vector<float> values(static_cast<size_t>(h.paramCount));
    if (unit::readDirect(channel, h.paramRecord, values.data(), h.paramCount) == 0 &&
        frame <= count)
        param = static_cast<double>(values[frame - 1]);
    unit::close(channel);
}

// The reason a set without an error frame that counts gives no errors.
std::string noErrorFrameReason(const FrameHeader& h) {
    const auto n = [](int v) { return std::to_string(v); };
    if (!h.errorFile.empty())
        return "its error file " + h.errorFile + " holds " + n(h.errorChannels) + " channels in " +
               n(h.errorFrames) + " frames, not " + n(h.channels) + " in " + n(h.frames);
    if (h.hasParams && h.paramCount == h.channels)
        return h.paramFile + " is named as its parameter file (header lines 5 and 6), "
               "not as its error file (lines 7 and 8)";
    return h.frames == 1 ? "it has one frame and no error file" : "it names no error file";
}

}  // namespace

const std::string& frameErrorsNote() { return errorsNote; }

int TAVREAD(int channel, std::string_view name, int first, int last, double* data1,
            double* data2, std::string& title, int& frame, int& nFrames, double& param) {
    const bool askFrame = nFrames >= 0;
    const int width = last - first + 1;
    if (width < 1) return -2;
    std::fill(data2, data2 + width, 0.0);

    std::string headerName = trimmed(name);
    FrameHeader h;
    if (!readHeader(channel, headerName, h)) return -1;
    errorsNote = h.frames == 2 && !h.hasErrors ? "its second frame, the errors, holds zeros only"
                                                : noErrorFrameReason(h);
    nFrames = h.frames;
    param = -2.0;
    title = h.title;
    if (first < 1 || last > h.channels) return -2;

    std::string dataFile = besideHeader(headerName, h.dataFile);
    for (bool readFailed = false;; readFailed = true) {
        if (!openDataFile(channel, dataFile, h.channels, readFailed)) return -1;
        if (nFrames <= 2 && !h.hasErrors) {
            param = 1.0;
            frame = 0;
            if (!readWindow(channel, 1, h.channels, first, last, data1)) {
                unit::close(channel);
                continue;
            }
            if (nFrames > 1 && !readWindow(channel, 2, h.channels, first, last, data2)) {
                warnNoErrors(dataFile);
                errorsNote = "its second frame, the errors, cannot be read";
            }
            unit::close(channel);
            return 0;
        }
        chooseFrame(frame, nFrames, askFrame);
        const bool good = readWindow(channel, frame, h.channels, first, last, data1);
        unit::close(channel);
        if (good) break;
    }
    if (h.hasParams) readParameter(channel, h, besideHeader(headerName, h.paramFile), frame, param);
    if (h.hasErrors) {
        const std::string errorFile = besideHeader(headerName, h.errorFile);
        const bool good = openDirect(channel, errorFile, 4 * h.channels) &&
                          readWindow(channel, frame, h.channels, first, last, data2);
        unit::close(channel);
        if (!good) warnNoErrors(errorFile);
        errorsNote = good ? "its error frame holds zeros only" : "its error file " + h.errorFile + " cannot be read";
    }
    return 0;
}
