// Unit table: channels (small integers) mapped to open streams.  OPEN,
// CLOSE, REWIND, BACKSPACE, record reads and writes, direct access.
#pragma once

#include "platform/edit_format.h"

#include <iosfwd>
#include <string>
#include <string_view>

namespace unit {

// I/O status codes (iostat): 0 success, IOSTAT_END at end of file, positive
// for a failure.
constexpr int IOSTAT_END = -1;
constexpr int IOERR_NOT_OPEN = 1001;     // channel not connected
constexpr int IOERR_OPEN_FAILED = 1002;  // file could not be opened
constexpr int IOERR_EXISTS = 1003;       // STATUS=NEW and the file exists
constexpr int IOERR_MISSING = 1004;      // STATUS=OLD and the file is missing
constexpr int IOERR_READ = 1005;         // a read failed
constexpr int IOERR_WRITE = 1006;        // a write failed
constexpr int IOERR_BAD_RECORD = 1007;   // direct access: record out of range
constexpr int IOERR_BAD_ACCESS = 1008;   // operation not allowed by the access mode
constexpr int IOERR_BAD_UNIT = 1009;     // channel number not allowed

enum class Status { Old, New, Unknown, Replace, Scratch };
enum class Access { Sequential, Direct };
enum class Position { AsIs, Append, Rewind };
// Read: the file is only read and can never be written through the channel.
// Write: the file must be writable, or the open fails.  ReadWrite: writable
// when the file allows it, else read only.
enum class Action { ReadWrite, Read, Write };

struct OpenSpec {
    Status status = Status::Unknown;
    Access access = Access::Sequential;
    Position position = Position::AsIs;
    int recordLength = 0;  // direct access: bytes per record
    Action action = Action::ReadWrite;
};

// Channels 5 and 6 are the terminal (standard input and output), -1 is the
// console (standard output).  Tests may redirect the terminal streams.
void setTerminal(std::istream* in, std::ostream* out);
void resetTerminal();
// Closes every file channel and forgets any open '$' record; the terminal
// streams are reset too.  Used by tests to start from the program's start.
void resetUnits();

int open(int u, std::string_view fileName, const OpenSpec& spec);
int close(int u, bool deleteFile = false);
int rewind(int u);
int backspace(int u);  // step back one record
bool isOpen(int u);
std::string fileNameOf(int u);  // empty when not open
bool isTerminal(int u);         // 5, 6 or -1
// True once a read from the terminal has met the end of its input.
bool terminalInputEnded();
// True when a person answers at the terminal (a console, or a test playing
// one), not a script piped into the program.
bool terminalIsPerson();
// True when both names lead to one existing file.
bool sameFile(std::string_view a, std::string_view b);

// After its end, the terminal still answers kAnswersAfterEnd reads with the
// end of file, so that questions take their defaults; a read beyond that
// comes from a question asked again and again that nobody can answer, and
// throws TerminalInputEnded, on which the monitor ends the session.
constexpr int kAnswersAfterEnd = 20;
struct TerminalInputEnded {};
// New input at the terminal (a test feeding its next lines): its end has
// not been met yet.
void restartTerminalInput();

// Reads one record (line) without its end; IOSTAT_END at end of file.
int readRecord(int u, std::string& record);
// Direct access: reads/writes `n` 4-byte IEEE reals of record `rec` (1-based).
int readDirect(int u, int rec, float* values, int n);
int writeDirect(int u, int rec, const float* values, int n);

// Writes raw bytes on the channel's current record; '\n' ends records.
int writeBytes(int u, std::string_view bytes);
// Ends a record left open by a '$' format, if there is one.
int endOpenRecord(int u);
int flush(int u);

// A short text for an iostat code.
std::string ioText(int iostat);

}  // namespace unit

// Formatted WRITE: write(u, "(1X,A6,' --- ',1P,G14.6)", tag, value).
// Returns the iostat of the write.
int writeItems(int u, std::string_view format, const FmtItems& items);
template <class... A>
int write(int u, std::string_view format, const A&... a) {
    return writeItems(u, format, FmtItems{FmtItem(a)...});
}
// The same for a literal format text; it also keeps the call apart from
// the system's write(int, const void*, size_t).
template <class... A>
int write(int u, const char* format, const A&... a) {
    return writeItems(u, format, FmtItems{FmtItem(a)...});
}
// List-directed WRITE(u,*).
int writeListItems(int u, const FmtItems& items);
template <class... A>
int writeList(int u, const A&... a) {
    return writeListItems(u, FmtItems{FmtItem(a)...});
}
