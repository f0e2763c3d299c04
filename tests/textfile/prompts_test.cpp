// Dialogue prompts: the layouts of the prompt line, the yes/no loop and the
// questions for one number.
#include "textfile/prompts.h"
#include "core/console_layer.h"

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

// Every prompt layout in one table: I05ASK (no default) and I05ASKD.  A
// blank, the text, a blank, dots so that ": " stands in columns C - 1 and C;
// a default stands in "< >" before the colon; a text longer than the cursor
// gets no dots, one just short gets only the blank; a long default is cut
// at the right after the text gave way.
TEST_F(Prompts, LayoutsOfThePromptLine) {
    const std::string d70(70, 'd'), d100(100, 'd');
    const struct {
        std::string text;
        const char* deflt;  // nullptr: I05ASK
        int cursor;
        std::string shown;
    } rows[] = {
        {"Enter the format code", nullptr, 60, " Enter the format code " + std::string(35, '.') + ": "},
        {std::string(65, 'x'), nullptr, 60, " " + std::string(65, 'x') + ": "},
        {"ZEMOK", nullptr, 0, " ZEMOK: "},
        {"", nullptr, 3, " : "},
        {"abcdef", nullptr, 10, " abcdef : "},   // L + 4 = C: a blank, no dots
        {"abcdefg", nullptr, 10, " abcdefg: "},  // L + 3 = C: nothing added
        {"Number of variables", "5", 60, " Number of variables " + std::string(31, '.') + " < 5 >: "},
        {"File name", "    ", 20, " File name ...... : "},  // no default: one blank before the colon
        {"Continue? [ Y / N ]", "Yes", 0, " Continue? [ Y / N ] < Yes >: "},
        {"Q", d100.c_str(), 60, " < " + std::string(74, 'd') + ": "},  // the line ends at 76
    };
    for (const auto& r : rows) {
        if (r.deflt == nullptr) I05ASK(r.text, r.cursor);
        else I05ASKD(r.text, r.deflt, r.cursor);
        const std::string shown = output();
        EXPECT_EQ(shown, r.shown) << r.text;
        if (r.cursor == 60 && shown.size() < 62) {
            EXPECT_EQ(shown.find(':'), 58u) << r.text;  // the colon stands in column 59
        }
    }
    EXPECT_EQ(composeDefaultQuestion("Tol", "1.0e-6", 30), "Tol ............ < 1.0e-6 >");
    EXPECT_EQ(composeDefaultQuestion("", "7", 12), " .. < 7 >");
    // 70 characters of default: the field is 74 wide, the text keeps 79 - 1 - 74;
    // 100: the default keeps 76 and the field fills all 80 columns.
    EXPECT_EQ(composeDefaultQuestion("Question", d70, 60), "Ques < " + d70 + " >");
    EXPECT_EQ(composeDefaultQuestion("Q", d100, 60), "< " + std::string(76, 'd') + " >");
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
