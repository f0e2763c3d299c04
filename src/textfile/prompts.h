// Dialogue prompts and listings: I05ASKD, I05YESNO, I05ASKR, I05ASKI, E4NUS1,
// and the array writers I5WRA1, I5WIA1, I05WMD1.
#pragma once

#include <string>
#include <string_view>

// A question with a default: "text ..... < default >: " with the ":" in
// column cursor - 1 (the cursor stays behind ": ").  A blank default shows
// no angle brackets.  No reply is read here.
void I05ASKD(std::string_view text, std::string_view defaultText, int cursor);

// The line I05ASKD hands to I05ASK: text, dots and the default field ending
// in column cursor - 3 (at most 80 characters, trailing blanks cut).
std::string composeDefaultQuestion(std::string_view text, std::string_view defaultText,
                                   int cursor);

// Asks "text [ Y / N ]" until the reply begins with Y or N (either case) and
// returns that letter, upper case, in result.  A default beginning with Y or
// N is shown as "Yes" or "No" and is the answer to an empty reply.  When the
// terminal input has ended the default letter is taken, and 'N' without one.
void I05YESNO(char& result, std::string_view text, std::string_view defaultAnswer,
              std::string_view commentChars, int cursor);

// Ask for one real / one integer, the present value shown as the default.
// An empty reply keeps the value; a reply that is no number is asked again.
// digits: significant digits of the real default.
void I05ASKR(std::string_view text, double& value, int digits, std::string_view commentChars,
             int cursor);
void I05ASKI(std::string_view text, int& value, std::string_view commentChars, int cursor);

// Says on dwUnit (and the terminal) that the parameter `name` has no use here.
void E4NUS1(std::string_view name);

// Writes rows 1..m of the m by n array held column by column with leading
// dimension MD (a(i,j) = array[(j-1)*MD + i-1]): the title, then each row in
// 5(1P,G14.6) followed by an empty line.  status is the write's iostat.
void I5WRA1(int channel, const double* array, int MD, int m, int n, std::string_view title,
            int& status);
// The same for integers, 10(1X,I6).
void I5WIA1(int channel, const int* array, int MD, int m, int n, std::string_view title,
            int& status);

// Writes vector(1..n) (vector[0..n-1]) as a staircase, one entry a line,
// between two empty lines.
void I05WMD1(int channel, const double* vector, int n);
