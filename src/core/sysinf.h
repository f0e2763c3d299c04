// The system record sysinf: operating-system and file-system words, screen,
// cursor column, terminal and logical channels, dialogue mode; its reset.
#pragma once

#include <string>

struct SysInf {
    std::string OStype;          // char[16]
    std::string FileSystemType;  // char[16]
    std::string CPUtype;         // char[16]
    int inUnit = 5;
    int outUnit = 6;
    int screenW = 80;
    int screenH = 25;
    int CursorPosition = 60;
    int crUnit = 5;   // commands are read from here
    int drUnit = 5;   // data are read from here
    int dwUnit = 6;   // data and reports are written here
    int auxUnit1 = 8;
    int auxUnit2 = 9;
    int MODEE4 = 0;   // 0 interactive, 1 auto
};

// Channels used when a file is opened on demand.
struct ChannelTable {
    int SaveFileUnit = 2;
    int CommandFileUnit = 3;
    int ZEMOKdataUnit = 4;
    int ZEMOKoutputUnit = 7;
    int ZEMOKAuxIOUnit1 = 8;
    int ZEMOKAuxIOUnit2 = 9;
};

extern SysInf sysinf;
extern ChannelTable channelTable;

// Width of a text field of sysinf.
constexpr int kSysWordWidth = 16;

// Fills sysinf and the channel table with their start values; the
// file-system word and screen size follow from the operating-system word.
void resetSysinf();
// Applies the operating-system table to the current OStype.
void applyOStable();
