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

}  // namespace
