// The system record: sysinf and the channel table with resetSysinf and
// applyOStable (file system and screen size from the operating-system word).
#include "core/sysinf.h"

#include "core/string_tools.h"

SysInf sysinf;
ChannelTable channelTable;

namespace {

std::string field16(std::string_view text) {
    std::string f(text.substr(0, kSysWordWidth));
    f.resize(kSysWordWidth, ' ');
    return f;
}

struct OSRow {
    const char* os;
    const char* fileSystem;
    int width;
    int height;
};

}  // namespace

void applyOStable() {
    static const OSRow rows[] = {{"MS_DOS", "FAT32", 80, 25}, {"OS_2", "FAT", 80, 25},
                                 {"WIN_NT", "FAT32", 80, 48}, {"WIN_9X", "FAT32", 80, 48},
                                 {"UNIX", "UNIX", 128, 50},   {"VMS", "VMS", 80, 25}};
    OSRow chosen{"", "FAT32", 80, 25};
    for (const OSRow& row : rows) {
        if (R02EQ(sysinf.OStype, row.os, 0)) chosen = row;
    }
    sysinf.FileSystemType = field16(chosen.fileSystem);
    sysinf.screenW = chosen.width;
    sysinf.screenH = chosen.height;
}

void resetSysinf() {
    sysinf = SysInf{};
    sysinf.OStype = field16("MS_DOS");
    sysinf.CPUtype = field16("x86");
    applyOStable();
    channelTable = ChannelTable{};
}
