// File specifications taken apart and put together again for FAT, FAT32,
// UNIX and VMS: fields, limits, status values and the messages of failures.
#include "textfile/file_spec.h"

#include "monitor/monitor.h"
#include "support/terminal_test.h"
#include "textfile/word_splitter.h"

#include <string>

namespace {

class FileSpec : public TerminalTest {
protected:
    void SetUp() override {
        resetProgramState();
        TerminalTest::SetUp();
    }
    static std::string trim(const std::string& f) { return f.substr(0, f.find_last_not_of(' ') + 1); }
    std::string compose(const SpecFields& fields, const std::string& fs, int& err) {
        std::string spec(80, '?');
        R02CFS(spec, fields, fs, err);
        EXPECT_EQ(spec.size(), 80u);
        return trim(spec);
    }
};

const std::string kIn = "\n             \"";  // the second line of a message

// One specification: the status, the six fields, the text composed from
// them again (nullptr: not composed) and the console output of the parse
// (nullptr: not looked at).
struct ParseCase {
    const char* fs;
    const char* spec;
    int err;
    const char* parts[6];
    const char* composed;
    const char* said;
};

const ParseCase kCases[] = {
    {"FAT", "C:\\DATA\\CURVE.DAT", 0, {"", "C", "DATA", "CURVE", "DAT", ""}, "C:\\DATA\\CURVE.DAT", ""},
    {"FAT32", "  d:\\runs\\may\\..\\x.y  ", 0, {"", "d", "runs\\may\\..", "x", "y", ""}, "d:\\runs\\may\\..\\x.y", ""},
    {"FAT", "LONGFILENAME.TEXT", 1, {"", "", "", "LONGFILE", "TEX", ""}, "LONGFILE.TEX",
     " R02PFN ---W- File name string too long: \"LONGFILENAME\"\n"
     "              truncated to: \"LONGFILE\"\n"
     " R02PFN ---W- Extension string too long: \"TEXT\"\n"
     "              truncated to: \"TEX\"\n"},
    {"fat32", "LONGFILENAME.TEXT", 0, {"", "", "", "LONGFILENAME", "TEXT", ""}, "LONGFILENAME.TEXT", ""},
    // Directory steps are kept within the limits of a name; a leading "\" leaves no mark.
    {"FAT", "\\MEASUREMENTS\\A.B\\Z", 1, {"", "", "MEASUREM\\A.B", "Z", "", ""}, "MEASUREM\\A.B\\Z", nullptr},
    {"FAT", "AB:X", 1, {"", "A", "", "X", "", ""}, "A:\\X",
     " R02PFS ---W- DEVICE name too long: \"AB\"\n              truncated to: \"A\"\n"},
    {"UNIX", "a.b.c", 0, {"", "", "", "a", "b.c", ""}, "a.b.c", ""},
    {"unix", "/home/user/run.1.dat", 0, {"", "", "home/user", "run", "1.dat", ""}, "home/user/run.1.dat", ""},
    {"UNIX", "/", 0, {"", "", "/", "", "", ""}, "/", ""},
    {"UNIX", "..", 0, {"", "", "..", "", "", ""}, "../", ""},
    {"UNIX", "~/data/x.sub", 0, {"", "", "~/data", "x", "sub", ""}, "~/data/x.sub", ""},
    {"VMS", "NODE::DEV:[DIR]NAME.EXT;3", 0, {"NODE", "DEV", "DIR", "NAME", "EXT", "3"}, "NODE::DEV:[DIR]NAME.EXT;3", ""},
    {"VMS", "DISK$USER:<ME.RUNS>CURVE.DAT", 0, {"", "DISK$USER", "ME.RUNS", "CURVE", "DAT", ""},
     "DISK$USER:[ME.RUNS]CURVE.DAT", ""},
    // Failures keep what was found before them.
    {"FAT", "C:X:", -1, {"", "C", "", "", "", ""}, nullptr,
     " R02PFS ---E- Multiple DEVICE definition in\n             \"C:X:\"\n"},
    {"FAT", "X\\C:", -2, {"", "", "X", "", "", ""}, nullptr,
     " R02PFS ---E- DEVICE field not in order in\n             \"X\\C:\"\n"},
    {"FAT", "A.B.C", -1, {"", "", "", "", "", ""}, nullptr,
     " R02PFN ---E- Too many dot characters in\n             \"A.B.C\"\n"
     " R02PFS ---E- Multiple FILE NAME definition in\n             \"A.B.C\"\n"},
    {"UNIX", "data/~/x", -2, {"", "", "data", "", "", ""}, nullptr,
     " R02PFS ---E- DIRECTORY field not in order in\n             \"data/~/x\"\n"},
    {"VMS", "DEV:NODE::X", -2, {"", "DEV", "", "", "", ""}, nullptr,
     " R02PFS ---E- NODE field not in order in\n             \"DEV:NODE::X\"\n"},
    {"VMS", "NAME[DIR]", -2, {"", "", "", "NAME", "", ""}, nullptr, nullptr},
    {"VMS", "A.B.C", -1, {"", "", "", "A", "B", ""}, nullptr,
     " R02PFS ---E- Multiple EXTENSION definition in\n             \"A.B.C\"\n"},
    {"VMS", "DEV:[DIR>X", -3, {"", "DEV", "", "", "", ""}, nullptr,
     " R02GEL ---E- Unmatched boundaries: >\n R02PFS ---E- Wrong DIRECTORY field in\n             \"DEV:[DIR>X\"\n"},
    {"FAT", " \t ", 2, {"", "", "", "", "", ""}, nullptr, ""},
    {"NTFS", "x.y", -10, {"", "", "", "", "", ""}, nullptr,
     " R02PFS ---E- Unknown file system identifier: \"NTFS\"\n"
     "              Must be FAT, FAT32, UNIX, VMS, ...\n"
     "              Check whether \"@sysinf.fd\" is included in the main program.\n"},
    {"", "x.y", -10, {"", "", "", "", "", ""}, nullptr, nullptr},
};

TEST_F(FileSpec, ParsedFieldsStatusesMessagesAndTheWayBack) {
    for (const ParseCase& c : kCases) {
        SCOPED_TRACE(std::string(c.fs) + " " + c.spec);
        SpecFields fields = makeSpecFields(64);
        int err = 99;
        R02PFS(c.spec, fields, c.fs, err);
        EXPECT_EQ(err, c.err);
        for (int k = 0; k < kSpecFieldCount; ++k) EXPECT_EQ(trim(fields[static_cast<std::size_t>(k)]), c.parts[k]) << k;
        std::string shown = output();
        if (c.said) {
            EXPECT_EQ(shown, c.said);
        }
        if (c.composed) {
            EXPECT_EQ(compose(fields, c.fs, err), c.composed);
            EXPECT_EQ(err, 0);
            EXPECT_EQ(output(), "");
        }
    }
}

TEST_F(FileSpec, NameAndExtensionApartAndTogether) {
    std::string name(16, ' '), ext(16, ' '), word(20, '?');
    int err = 99;
    R02PFN("CURVE.DAT", name, ext, "FAT", err);
    EXPECT_EQ(err, 0);
    EXPECT_EQ(name, field("CURVE", 16));
    EXPECT_EQ(ext, field("DAT", 16));
    R02PFN(".profile", name, ext, "UNIX", err);
    EXPECT_EQ(name, field("", 16));
    EXPECT_EQ(ext, field("profile", 16));
    R02CFN(word, "CURVE", "   ", "UNIX", err);
    EXPECT_EQ(word, field("CURVE", 20));
    R02CFN(word, "LONGFILENAME", "TEXT", "FAT", err);
    EXPECT_EQ(err, 1);
    EXPECT_EQ(word, field("LONGFILE.TEX", 20));
    EXPECT_EQ(output(), " R02CFN ---W- File name too long, truncated to \"LONGFILE\"\n"
                        " R02CFN ---W- Extension too long, truncated to \"TEX\"\n");
}

// Fields given by hand: the status, the text composed and the messages.
struct ComposeCase {
    const char* fs;
    const char* parts[6];
    int err;
    const char* composed;
    const char* said;
};

const ComposeCase kComposeCases[] = {
    // What the file system adds itself is dropped; a device too long loses ":" first.
    {"FAT32", {"", "C:", "\\DATA\\", "CURVE.", ".DAT", ""}, 0, "C:\\DATA\\CURVE.DAT", ""},
    {"FAT32", {"SRV", "", "", "CURVE", "", "7"}, 0, "CURVE", ""},  // no node, no other
    {"VMS", {"SRV:", "D", "[A.B]", "N", "", ";7"}, 0, "SRV::D:[A.B]N;7", ""},
    {"UNIX", {"", "", "my data", "cur ve", "d a t", ""}, 0, "mydata/curve.dat", ""},
    {"UNIX", {"", "", "", "", "bashrc", ""}, 0, ".bashrc", ""},
    {"UNIX", {"", "", "./a", "x", "", ""}, 0, "./a/x", ""},
    {"FAT", {"", "", "", "LONGFILENAME", "DAT", ""}, 1, "LONGFILE.DAT",
     " R02CFS ---W- Exceeded FILE NAME field length: \"LONGFILENAME\"\n              truncated to: \"LONGFILE\"\n"},
    {"FAT", {"", "", "", "A.B", "DAT", ""}, -1, "", " R02CFS ---E- Wrong FILE NAME specification: \"A.B\".\n"},
    {"VMS", {"", "", "", "N", "E", "1;2"}, -1, "", " R02CFS ---E- Wrong VERSION specification: \"1;2\".\n"},
    {"UNIX", {"", "", "./a/./b", "x", "", ""}, -1, "", nullptr},
    {"MAC", {"", "", "", "x", "", ""}, -10, "", " R02CFS ---E- Unknown file system: \"MAC\".\n"},
    {"UNIX", {"", "", "dddddddddddddddddddddddddddddddddddddddddddddddddd", "nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn", "", ""},
     -6, "", nullptr},
};

TEST_F(FileSpec, ComposeDropsCutsAndRefuses) {
    for (const ComposeCase& c : kComposeCases) {
        SCOPED_TRACE(std::string(c.fs) + " " + c.composed);
        SpecFields fields = makeSpecFields(64);
        for (int k = 0; k < kSpecFieldCount; ++k) fields[static_cast<std::size_t>(k)] = field(c.parts[k], 64);
        int err = 99;
        EXPECT_EQ(compose(fields, c.fs, err), c.composed);
        EXPECT_EQ(err, c.err);
        std::string shown = output();
        if (c.said) {
            EXPECT_EQ(shown, c.said);
        }
    }
}

}  // namespace
