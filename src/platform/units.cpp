// Unit table: unit::open, close, rewind, backspace, readRecord, readDirect,
// writeDirect, writeBytes, endOpenRecord; formatted and list-directed writes.
#include "platform/units.h"

#include "platform/list_directed_read.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <unistd.h>

namespace unit {
namespace {

struct Channel {
    std::FILE* file = nullptr;
    std::string name;
    OpenSpec spec;
    bool openRecord = false;  // a '$' write left the record open
};

std::istream* terminalIn = &std::cin;
std::ostream* terminalOut = &std::cout;
bool terminalRecordOpen = false;
bool terminalEnded = false;
bool terminalScripted = false;  // a test plays the person at the terminal
std::string openFailure;        // the system's reason of the last failed open
int failedReadsAfterEnd = 0;

std::map<int, Channel>& table() {
    static std::map<int, Channel> channels;
    return channels;
}

Channel* fileChannel(int u) {
    auto it = table().find(u);
    return it == table().end() ? nullptr : &it->second;
}

const char* modeFor(const OpenSpec& spec, bool exists) {
    if (spec.action == Action::Read) return "rb";
    if (spec.status == Status::Replace || spec.status == Status::Scratch || !exists) return "w+b";
    return "r+b";
}

int checkStatus(const OpenSpec& spec, bool exists) {
    if (spec.status == Status::Old && !exists) return IOERR_MISSING;
    if (spec.status == Status::New && exists) return IOERR_EXISTS;
    return 0;
}

// Sequential files: writing a record makes it the last one of the file.
void truncateHere(Channel& c) {
    long here = std::ftell(c.file);
    if (here < 0) return;
    std::fflush(c.file);
    std::error_code ec;
    const std::uintmax_t size = std::filesystem::file_size(c.name, ec);
    if (!ec && size > static_cast<std::uintmax_t>(here)) {
        [[maybe_unused]] int rc = ftruncate(fileno(c.file), here);
        std::fseek(c.file, here, SEEK_SET);
    }
}

}  // namespace

void setTerminal(std::istream* in, std::ostream* out) {
    terminalScripted = in != nullptr;
    terminalIn = in ? in : &std::cin;
    terminalOut = out ? out : &std::cout;
}

void resetTerminal() {
    terminalIn = &std::cin;
    terminalOut = &std::cout;
    terminalScripted = false;
    terminalRecordOpen = false;
    terminalEnded = false;
    failedReadsAfterEnd = 0;
}

void resetUnits() {
    for (auto& [u, c] : table()) {
        if (c.file) std::fclose(c.file);
    }
    table().clear();
    resetTerminal();
}

bool isTerminal(int u) { return u == 5 || u == 6 || u == -1; }

bool terminalInputEnded() { return terminalEnded; }

void restartTerminalInput() {
    terminalEnded = false;
    failedReadsAfterEnd = 0;
}

bool terminalIsPerson() { return terminalScripted || isatty(fileno(stdin)) != 0; }

bool sameFile(std::string_view a, std::string_view b) {
    std::error_code ec;
    const bool same = std::filesystem::equivalent(std::string(a), std::string(b), ec);
    return !ec && same;
}

int open(int u, std::string_view fileName, const OpenSpec& spec) {
    if (isTerminal(u) || u == 0) return IOERR_BAD_UNIT;
    if (isOpen(u)) close(u);
    std::string name(fileName);
    while (!name.empty() && name.back() == ' ') name.pop_back();
    if (name.empty()) return IOERR_OPEN_FAILED;
    std::error_code ec;
    bool exists = std::filesystem::exists(name, ec);
    if (int st = checkStatus(spec, exists)) return st;
    if (exists && std::filesystem::is_directory(name, ec)) return IOERR_OPEN_FAILED;
    std::FILE* f = std::fopen(name.c_str(), modeFor(spec, exists));
    if (!f) openFailure = std::strerror(errno);
    if (!f && exists && spec.action == Action::ReadWrite) f = std::fopen(name.c_str(), "rb");  // read-only file
    if (!f) return IOERR_OPEN_FAILED;
    if (spec.position == Position::Append) std::fseek(f, 0, SEEK_END);
    Channel c;
    c.file = f;
    c.name = name;
    c.spec = spec;
    table()[u] = c;
    return 0;
}

int close(int u, bool deleteFile) {
    Channel* c = fileChannel(u);
    if (!c) return 0;  // closing an unconnected channel is no error
    if (c->openRecord) std::fputc('\n', c->file);
    // What was written reaches the file at the latest here: a full disk
    // shows as an error of the stream or of the close.
    bool failed = std::ferror(c->file) != 0;
    if (std::fclose(c->file) != 0) failed = true;
    std::string name = c->name;
    bool scratch = c->spec.status == Status::Scratch;
    table().erase(u);
    std::error_code ec;
    if (deleteFile || scratch) std::filesystem::remove(name, ec);
    return failed ? IOERR_WRITE : 0;
}

int rewind(int u) {
    Channel* c = fileChannel(u);
    if (!c) return isTerminal(u) ? 0 : IOERR_NOT_OPEN;
    if (c->openRecord) std::fputc('\n', c->file);
    c->openRecord = false;
    std::fseek(c->file, 0, SEEK_SET);
    return 0;
}

int backspace(int u) {
    Channel* c = fileChannel(u);
    if (!c) return IOERR_NOT_OPEN;
    long pos = std::ftell(c->file);
    if (pos <= 0) return 0;
    long p = pos - 1;  // the end of the record just read
    while (p > 0) {
        std::fseek(c->file, p - 1, SEEK_SET);
        if (std::fgetc(c->file) == '\n') break;
        --p;
    }
    std::fseek(c->file, p, SEEK_SET);
    return 0;
}

bool isOpen(int u) { return fileChannel(u) != nullptr; }

std::string fileNameOf(int u) {
    Channel* c = fileChannel(u);
    return c ? c->name : std::string();
}

int readRecord(int u, std::string& record) {
    record.clear();
    if (u == 5 || u == -1) {
        if (!std::getline(*terminalIn, record)) {
            terminalIn->clear();
            if (terminalEnded && ++failedReadsAfterEnd > kAnswersAfterEnd) throw TerminalInputEnded{};
            terminalEnded = true;
            return IOSTAT_END;
        }
    } else {
        Channel* c = fileChannel(u);
        if (!c) return IOERR_NOT_OPEN;
        if (c->spec.access == Access::Direct) return IOERR_BAD_ACCESS;
        int ch = std::fgetc(c->file);
        if (ch == EOF) return std::ferror(c->file) ? IOERR_READ : IOSTAT_END;
        while (ch != EOF && ch != '\n') {
            record.push_back(static_cast<char>(ch));
            ch = std::fgetc(c->file);
        }
    }
    if (!record.empty() && record.back() == '\r') record.pop_back();
    return 0;
}

// Positions a direct-access channel at record `rec` for `n` reals.
static Channel* seekDirect(int u, int rec, int n, int& status) {
    Channel* c = fileChannel(u);
    status = !c ? IOERR_NOT_OPEN : (c->spec.access != Access::Direct ? IOERR_BAD_ACCESS : 0);
    if (status != 0) return nullptr;
    long recl = c->spec.recordLength;
    if (rec < 1 || n < 0 || static_cast<long>(n) * 4 > recl ||
        std::fseek(c->file, (rec - 1) * recl, SEEK_SET) != 0) {
        status = IOERR_BAD_RECORD;
        return nullptr;
    }
    return c;
}

int readDirect(int u, int rec, float* values, int n) {
    int status = 0;
    Channel* c = seekDirect(u, rec, n, status);
    if (!c) return status;
    std::size_t got = std::fread(values, 4, static_cast<std::size_t>(n), c->file);
    if (got != static_cast<std::size_t>(n)) return IOERR_BAD_RECORD;
    return 0;
}

int writeDirect(int u, int rec, const float* values, int n) {
    int status = 0;
    Channel* c = seekDirect(u, rec, n, status);
    if (!c) return status;
    std::string record(static_cast<std::size_t>(c->spec.recordLength), '\0');
    std::copy_n(reinterpret_cast<const char*>(values), n * 4, record.begin());
    if (std::fwrite(record.data(), 1, record.size(), c->file) != record.size()) return IOERR_WRITE;
    return 0;
}

int writeBytes(int u, std::string_view bytes) {
    if (u == 6 || u == -1 || u == 5) {
        terminalOut->write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        terminalOut->flush();
        if (!bytes.empty()) terminalRecordOpen = bytes.back() != '\n';
        return terminalOut->good() ? 0 : IOERR_WRITE;
    }
    Channel* c = fileChannel(u);
    if (!c) return IOERR_NOT_OPEN;
    if (c->spec.access == Access::Direct) return IOERR_BAD_ACCESS;
    if (!c->openRecord) truncateHere(*c);
    if (std::fwrite(bytes.data(), 1, bytes.size(), c->file) != bytes.size()) return IOERR_WRITE;
    std::fflush(c->file);
    if (!bytes.empty()) c->openRecord = bytes.back() != '\n';
    return 0;
}

int endOpenRecord(int u) {
    bool open = isTerminal(u) ? terminalRecordOpen : (fileChannel(u) && fileChannel(u)->openRecord);
    return open ? writeBytes(u, "\n") : 0;
}

int flush(int u) {
    if (isTerminal(u)) {
        terminalOut->flush();
        return 0;
    }
    Channel* c = fileChannel(u);
    if (!c) return IOERR_NOT_OPEN;
    std::fflush(c->file);
    return 0;
}

std::string ioText(int iostat) {
    switch (iostat) {
        case 0: return "no error";
        case IOSTAT_END: return "end of file";
        case IOERR_NOT_OPEN: return "channel is not connected";
        case IOERR_OPEN_FAILED: return openFailure.empty() ? "file cannot be opened" : "file cannot be opened: " + openFailure;
        case IOERR_EXISTS: return "file already exists";
        case IOERR_MISSING: return "file does not exist";
        case IOERR_READ: return "read error";
        case IOERR_WRITE: return "write error";
        case IOERR_BAD_RECORD: return "record does not exist";
        case IOERR_BAD_ACCESS: return "operation not allowed for this access";
        case IOERR_BAD_UNIT: return "channel number not allowed";
        case LIST_BAD_ITEM: return "a value is not a number of the kind asked for";
        default: return "input/output error";
    }
}

}  // namespace unit

int writeItems(int u, std::string_view format, const FmtItems& items) {
    FormattedText out = formatRecords(format, items);
    if (out.advance) out.text.push_back('\n');
    return unit::writeBytes(u, out.text);
}

int writeListItems(int u, const FmtItems& items) {
    return unit::writeBytes(u, listDirected(items) + "\n");
}
