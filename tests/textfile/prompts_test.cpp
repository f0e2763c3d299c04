// Dialogue prompts and listings: the layout of a question with a default,
// the yes/no loop, questions for one number, and the array writers.
#include "textfile/prompts.h"

#include "monitor/monitor.h"
#include "support/terminal_test.h"

#include <sstream>
#include <string>
#include <vector>

namespace {

class Prompts : public TerminalTest {
protected:
    void SetUp() override {
        resetProgramState();
        TerminalTest::SetUp();
    }
    static int count(const std::string& text, const std::string& part) {
        int n = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
        return n;
    }
};

TEST_F(Prompts, DefaultStandsInAngleBracketsBeforeTheColonInColumnCursorMinusOne) {
    I05ASKD("Number of variables", "5", 60);
    // text in 2..20, blank, dots 22..52, blank, "< 5 >" in 54..58, ":" in 59.
    std::string shown = output();
    EXPECT_EQ(shown, " Number of variables " + std::string(31, '.') + " < 5 >: ");
    EXPECT_EQ(shown.find(':'), 58u);
    I05ASKD("File name", "    ", 20);  // no default: one blank before the colon
    EXPECT_EQ(output(), " File name ...... : ");
    I05ASKD("Continue? [ Y / N ]", "Yes", 0);  // longer than the cursor: no dots
    EXPECT_EQ(output(), " Continue? [ Y / N ] < Yes >: ");
    EXPECT_EQ(composeDefaultQuestion("Tol", "1.0e-6", 30), "Tol ............ < 1.0e-6 >");
    EXPECT_EQ(composeDefaultQuestion("", "7", 12), " .. < 7 >");
}

TEST_F(Prompts, ALongDefaultIsCutAtTheRightAfterTheTextGaveWay) {
    // 70 characters of default: the field is 74 wide, the text keeps 79 - 1 - 74.
    std::string d70(70, 'd');
    EXPECT_EQ(composeDefaultQuestion("Question", d70, 60), "Ques < " + d70 + " >");
    // 100 characters: the default keeps 76, the field fills all 80 columns.
    EXPECT_EQ(composeDefaultQuestion("Q", std::string(100, 'd'), 60), "< " + std::string(76, 'd') + " >");
    I05ASKD("Q", std::string(100, 'd'), 60);  // and the prompt line ends at 76
    EXPECT_EQ(output(), " < " + std::string(74, 'd') + ": ");
}

TEST_F(Prompts, YesNoRepeatsUntilTheReplyBeginsWithYOrN) {
    const std::string question = " Save the results [ Y / N ] < No >: ";
    char answer = '?';
    feed("X\nyes\n");
    I05YESNO(answer, "Save the results", "N", "!", 0);
    EXPECT_EQ(answer, 'Y');
    EXPECT_EQ(output(), question + " Please answer by Yes, No, or CR for default.\n" + question);
    const struct { const char* reply; const char* deflt; char answer; } rows[] = {
        {"y\n", "N", 'Y'}, {"\n", "N", 'N'}, {"  YES\n", "n", 'Y'}, {"nope ! not now\n", "Y", 'N'},
        {"! only a comment\n", "Y", 'Y'}, {"", "Y", 'Y'}, {"", "", 'N'}};  // "": end of input
    for (const auto& r : rows) {
        feed(r.reply);
        I05YESNO(answer, "Save the results", r.deflt, "!", 0);
        EXPECT_EQ(answer, r.answer) << r.reply;
    }
}

TEST_F(Prompts, YesNoWithoutADefaultInsistsOnALetter) {
    char answer = '?';
    feed("\nmaybe\nn\n");
    I05YESNO(answer, "Go on", "x", "", 0);
    EXPECT_EQ(answer, 'N');
    std::string shown = output();
    EXPECT_EQ(count(shown, " Go on [ Y / N ]: "), 3);
    EXPECT_EQ(count(shown, "Please answer by Yes, No, or CR for default."), 2);
    feed("y\n");
    I05YESNO(answer, "", " ", "", 0);
    EXPECT_EQ(output(), " [ Y / N ]: ");
}

TEST_F(Prompts, RealQuestionShowsThePresentValueAndAsksAgainOnGarbage) {
    double v = 1.0e6;
    feed("abc\n-1.5e-3, 7\n");
    I05ASKR("Step length", v, 6, "!", 40);
    EXPECT_DOUBLE_EQ(v, -0.0015);
    EXPECT_EQ(count(output(), " Step length " + std::string(14, '.') + " < 1.0e+6 >: "), 2);
    v = 3.0;
    feed("\n   ! no value\n");
    I05ASKR("Factor", v, 40, "!", 0);  // 40 digits are cut to 15
    I05ASKR("Factor", v, 40, "!", 0);
    I05ASKR("Factor", v, 40, "!", 0);  // end of input
    EXPECT_DOUBLE_EQ(v, 3.0);
    EXPECT_EQ(output(), " Factor < 3.0 >:  Factor < 3.0 >:  Factor < 3.0 >: ");
}

TEST_F(Prompts, IntegerQuestionTakesTheFirstWord) {
    int n = 42;
    feed("x\n7;8\n12.0\n-3 more\n\n");
    I05ASKI("Iterations", n, "", 0);
    EXPECT_EQ(n, 7);
    EXPECT_EQ(count(output(), " Iterations < 42 >: "), 2);
    I05ASKI("Iterations", n, "", 0);
    EXPECT_EQ(n, 12);
    I05ASKI("Iterations", n, "", 0);
    I05ASKI("Iterations", n, "", 0);
    EXPECT_EQ(n, -3);
    EXPECT_EQ(count(output(), "< -3 >"), 1);
}

TEST_F(Prompts, UnusedParameterNotice) {
    E4NUS1("STEP    ");
    EXPECT_EQ(output(), " \"STEP\" is not used in this context (min. method, etc.)\n");
}

TEST_F(Prompts, ArraysRowByRowWithAnEmptyLineBehindEach) {
    const double row[6] = {1.0, -2.5, 0.5, 1.0e7, 123456.0, 3.0};
    int status = -1;
    I5WRA1(6, row, 1, 1, 6, "Table", status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(output(), " Table\n   1.00000      -2.50000      0.500000      1.000000E+07   123456.    \n"
                        "   3.00000    \n\n");
    // a(1,1)=1 a(2,1)=2 | a(1,2)=3 a(2,2)=4 with leading dimension 3; no title.
    const double a[6] = {1.0, 2.0, 99.0, 3.0, 4.0, 99.0};
    I5WRA1(0, a, 3, 2, 2, "", status);
    EXPECT_EQ(output(), "   1.00000       3.00000    \n\n   2.00000       4.00000    \n\n");
    const int k[11] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, -42};
    I5WIA1(6, k, 1, 1, 11, "Fixers", status);
    EXPECT_EQ(output(), " Fixers\n      1      2      3      4      5      6      7      8      9     10\n    -42\n\n");
    I5WRA1(77, a, 1, 1, 1, "Lost", status);  // channel 77 is not open
    EXPECT_EQ(status, unit::IOERR_NOT_OPEN);
    EXPECT_NE(output().find(" I5WRA1 ---E- Error code: {1001}."), std::string::npos);
}

TEST_F(Prompts, VectorStaircaseStepsThreeAndStartsAgainAfterFiftyFive) {
    std::vector<double> v(21, 1.0);
    v[1] = 0.001;
    I05WMD1(6, v.data(), 21);
    std::vector<std::string> lines;
    std::istringstream text(output());
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    ASSERT_EQ(lines.size(), 23u);
    const std::string one = "   1.00000    ";
    EXPECT_EQ(lines[0], "");
    EXPECT_EQ(lines[1], " " + one);
    EXPECT_EQ(lines[2], std::string(4, ' ') + "  1.000000E-03");
    EXPECT_EQ(lines[19], std::string(55, ' ') + one);  // entry 19
    EXPECT_EQ(lines[20], " " + one);                   // entry 20 starts again
    EXPECT_EQ(lines[21], std::string(4, ' ') + one);
    EXPECT_EQ(lines[22], "");
}

}  // namespace
