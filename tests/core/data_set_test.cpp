// The data set record and the system record: start values, the tables of
// rows, and what E4RST1 drops.
#include "core/e4dataset.h"
#include "monitor/monitor.h"
#include "core/sysinf.h"

#include <gtest/gtest.h>

namespace {

TEST(SystemRecord, OperatingSystemWordSelectsFileSystemAndScreen) {
    resetProgramState();
    EXPECT_EQ(sysinf.OStype, "MS_DOS          ");
    EXPECT_EQ(sysinf.FileSystemType, "FAT32           ");
    EXPECT_EQ(sysinf.screenW, 80);
    EXPECT_EQ(sysinf.screenH, 25);
    EXPECT_EQ(sysinf.CursorPosition, 60);
    EXPECT_EQ(sysinf.dwUnit, 6);
    EXPECT_EQ(channelTable.CommandFileUnit, 3);
    struct Row { const char* os; const char* fs; int w, h; };
    for (Row r : {Row{"UNIX", "UNIX", 128, 50}, Row{"WIN_9X", "FAT32", 80, 48},
                  Row{"OS_2", "FAT", 80, 25}, Row{"VMS", "VMS", 80, 25},
                  Row{"BEOS", "FAT32", 80, 25}}) {
        sysinf.OStype = r.os;
        applyOStable();
        EXPECT_EQ(sysinf.FileSystemType, padded(r.fs, 16)) << r.os;
        EXPECT_EQ(sysinf.screenW, r.w) << r.os;
        EXPECT_EQ(sysinf.screenH, r.h) << r.os;
    }
}

TEST(DataSet, StartState) {
    resetProgramState();
    EXPECT_EQ(E4DataSet.xScale(1), 1.0);
    EXPECT_EQ(E4DataSet.xScale(128), 1.0);
    EXPECT_EQ(E4DataSet.crName, padded("zemok.cmd", 32));
    EXPECT_EQ(E4DataSet.hpName, padded("zemok.hlp", 32));
    EXPECT_EQ(E4DataSet.iStat(row::userReserved), 0);
}

// A data set with every flag and vector that E4RST1 looks at set.
void fillDataSet(bool argumentsHeld) {
    resetProgramState();
    E4DataSetRecord& d = E4DataSet;
    for (int r = 1; r <= 105; ++r) d.iStat(r) = 1;
    d.iStat(row::nVar) = 3;
    d.iStat(row::xStartSet) = argumentsHeld ? 1 : 0;
    d.iFixer(1) = 1;
    d.iFixer(2) = 0;
    d.iFixer(3) = 5;
    for (int i = 1; i <= 128; ++i) {
        d.xStart(i) = 6.0;
        d.xEnd(i) = 12.0;
        d.xScale(i) = 3.0;
        d.deltaX(i) = d.deltaG(i) = d.direct(i) = d.Hdiag(i) = 1.0;
    }
    d.deltaF = d.deltaXn = d.FrlErr = 2.0;
}

TEST(Reset, PartialResetKeepsHeldArguments) {
    fillDataSet(true);
    E4RST1("PARTIAL");
    const E4DataSetRecord& d = E4DataSet;
    for (int r : {48, 45, 3, 49, 50, 44, 12, 39, 40, 41, 47}) EXPECT_EQ(d.iStat(r), 0) << r;
    for (int r : {42, 43, 46, 53, 56, 58, 59, 60, 8, 37, 54, 57}) EXPECT_EQ(d.iStat(r), 1) << r;
    EXPECT_EQ(d.iStat(row::nFree), 2);  // two of the three variables are free
    EXPECT_EQ(d.xStart(1), 6.0);
    EXPECT_EQ(d.xScale(1), 3.0);
    EXPECT_EQ(d.deltaG(1), 0.0);
    EXPECT_EQ(d.deltaX(1), 1.0);
    EXPECT_EQ(d.deltaX(2), 0.0);  // fixed variable
    EXPECT_EQ(d.direct(2), 0.0);
    EXPECT_EQ(d.Hdiag(2), 0.0);
    EXPECT_EQ(d.Hdiag(3), 1.0);
    EXPECT_EQ(d.deltaF, 2.0);
    EXPECT_EQ(d.FrlErr, 0.0);
}

TEST(Reset, FullResetWithoutArgumentsUnscalesAndForgets) {
    fillDataSet(false);
    E4RST1("ALL");
    const E4DataSetRecord& d = E4DataSet;
    for (int r : {42, 43, 46, 53, 56, 58, 59, 60, 8, 37, 54, 57}) EXPECT_EQ(d.iStat(r), 0) << r;
    EXPECT_EQ(d.iStat(row::V_eigenSet), 1);
    EXPECT_EQ(d.xStart(1), 2.0);   // 6 / 3
    EXPECT_EQ(d.xEnd(128), 4.0);   // 12 / 3
    EXPECT_EQ(d.xScale(1), 1.0);
    EXPECT_EQ(d.deltaX(1), 0.0);
    EXPECT_EQ(d.deltaF, 0.0);
    EXPECT_EQ(d.deltaXn, 0.0);
}

}  // namespace
