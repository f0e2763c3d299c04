// Prompt routines of the fit dialogue and its name-and-value lines, with
// replies from an answers file and from the terminal.
#include "vardene_session_fixture.h"

#include "scatter/answers_file.h"

namespace {

// Opens an answers file holding `text` on channel 11.
class PromptTest : public SessionTest {
protected:
    void replies(const std::string& text) { ASSERT_TRUE(openAnswersFile(writeFile("p.ans", text))); }
};

}  // namespace

TEST_F(PromptTest, QuestionLinesEndTheirDefaultFieldInColumn57) {
    // Text, blank, dots, blank, then "< default >" right-aligned in 16
    // columns: dots from column 23 to 40 behind a text of 21 characters.
    EXPECT_EQ(composeAskLine("Enter the format code", "2"),
              "Enter the format code " + std::string(18, '.') + " <            2 >");
    EXPECT_EQ(composeAskLine(" Enter comment line ", ""),
              " Enter comment line " + std::string(20, '.') + " <              >");
    // A 25-character default widens the field to 29 columns.
    EXPECT_EQ(composeAskLine("First and last channels ", "          51,         474"),
              "First and last channels ... <           51,         474 >");
    EXPECT_EQ(composeAskLine("Enter the format code", "2").size(), 57u);
    // Real defaults: zero is "0.0", others fixed with trailing zeros dropped.
    EXPECT_EQ(realAnswerText(0.0), "0.0");
    EXPECT_EQ(realAnswerText(0.95), "0.95");
    EXPECT_EQ(realAnswerText(-2.5), "-2.5");
}

TEST_F(PromptTest, TerminalPromptsShowTheLineAndKeepDefaults) {
    int code = 2;
    double fraction = 0.0;
    std::string title(60, ' ');
    const std::string out = withTerminal("\n\n  My title ! a remark\n", [&] {
        ASKINUM("Enter the format code", code);
        ASKRNUM("Enter Fraction of the curve", fraction);
        ASKSTR(" Enter the series title", "", title);
    });
    EXPECT_EQ(code, 2);
    EXPECT_DOUBLE_EQ(fraction, 0.0);
    EXPECT_EQ(title, padded("  My title", 60));
    EXPECT_EQ(out, " Enter the format code " + std::string(18, '.') + " <            2 >: " +
                       " Enter Fraction of the curve " + std::string(12, '.') +
                       " <          0.0 >: " + "  Enter the series title " +
                       std::string(16, '.') + " <              >: ");
}

TEST_F(PromptTest, NumbersFromTheAnswersFileAndRefusedReplies) {
    replies("7\n0.5\nseven\n");
    int n = 0, m = 3;
    double r = 0.0;
    const std::string out = withTerminal("4\n", [&] {
        ASKINUM("Enter Number of phases", n);
        ASKRNUM("Enter concentration of the system", r);
        ASKINUM("Enter the format code", m);
    });
    EXPECT_EQ(n, 7);
    EXPECT_DOUBLE_EQ(r, 0.5);
    EXPECT_EQ(m, 4);
    EXPECT_NE(out.find(" USERF ----E- Answer \"seven\" of the answers file refused: an integer is "
                       "asked for.\n"),
              std::string::npos)
        << out;
    EXPECT_FALSE(answersActive());
    // The refused question is put again at the terminal, with its default.
    EXPECT_NE(out.find(" Enter the format code " + std::string(18, '.') + " <            3 >: "),
              std::string::npos);
}

TEST_F(PromptTest, EndedTerminalKeepsValuesAndNeverLoops) {
    int n = 5, first = 1, last = 2;
    double r = 1.5;
    std::string name(10, '*');
    withTerminal("", [&] {
        ASKINUM("Enter Number of phases", n);
        ASKRNUM("Enter concentration of the system", r);
        ASKINUM2("First and last channels ", first, last);
        ASKNAM("Enter INTENSITY file name", "dat", name);
    });
    EXPECT_EQ(n, 5);
    EXPECT_DOUBLE_EQ(r, 1.5);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(last, 2);
    EXPECT_EQ(name, std::string(10, ' '));
}
