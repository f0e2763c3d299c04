// Replies of the fit dialogue, from the answers file or the terminal, and
// the prompt routines ASKSTR, ASKINUM, ASKRNUM, ASKINUM2, ASKNAM.
#pragma once

#include <string>
#include <string_view>

constexpr int kAnswersChannel = 11;

// Where a reply came from.
enum class ReplyOrigin { AnswersFile, Terminal, Ended };

// Opens the answers file `name` (trimmed) OLD on channel 11; true when it
// exists.  From then on replies come from it, with no prompt, until it ends
// or an answer in it is refused.
bool openAnswersFile(std::string_view name);
// True while replies come from the answers file.
bool answersActive();
// The dialogue goes on at the terminal: channel 11 is closed.
void leaveAnswersFile();
// Program start state: no answers file, channel 11 closed if it was ours.
void resetAnswersFile();

// Reads one reply line ("!" begins a comment) into line (trimmed).  From
// the answers file no prompt is shown; at its end the dialogue goes on at
// the terminal, where `promptLine` (if not empty) is written in
// (1X,A,': ',$).  Returns the origin; Ended when the terminal input has
// ended (line is then empty).
ReplyOrigin readReply(std::string_view promptLine, std::string& line);

// Refuses the last answer taken (reply or free-form record) and says why.
// Every refusal of the fit dialogue comes here.  An answer of the answers
// file is named in the message and the file is left: the rest of the
// dialogue goes on at the terminal, since the file's next lines were
// written for the questions after an accepted answer and would answer the
// wrong ones.
void refuseAnswer(std::string_view why);

// Free-form reads of the dialogue (no prompt): n numbers, or one word.  A
// record that does not hold the items is refused (refuseAnswer with
// `what`) and the read is made again.  Returns false when the
// terminal input ended before the items were read.
bool readAnswerReals(double* v, int n, std::string_view what);
bool readAnswerInt(int& v, std::string_view what);
bool readAnswerWord(std::string& word, std::string_view what);

// Where the last reply or free-form record came from, and its text.
ReplyOrigin lastReplyOrigin();
const std::string& lastAnswerText();

// The question line of the prompt routines: prompt, dots and the default
// between "< " and " >", right-aligned in a field of at least 16 characters
// that ends in column 57.
std::string composeAskLine(std::string_view prompt, std::string_view defaultText);

// Text of a real default: "0.0" for zero, else fixed with up to 6 digits
// on either side of the point (trailing zeros dropped), exponent form when
// that does not fit.
std::string realAnswerText(double value);

// A blank reply keeps the default; answer keeps its size as a field.
void ASKSTR(std::string_view prompt, std::string_view defaultText, std::string& answer);
// The present value is the default; a reply that does not convert is asked
// again.
void ASKINUM(std::string_view prompt, int& value);
void ASKRNUM(std::string_view prompt, double& value);
// Two integers, the reply split at blanks, commas and semicolons; a missing
// word keeps its value.
void ASKINUM2(std::string_view prompt, int& first, int& last);
// A file name with the default extension ext (none when ext is blank),
// added when the reply has none.  A blank reply gives a blank name.  name
// keeps its size as a field.
void ASKNAM(std::string_view prompt, std::string_view ext, std::string& name);

// Name-and-value lines: left a label, middle a value as text, right blank,
// composed by R02LINE and written by I05LINE on `channel`.  Reals become
// text through R02R2C1 with the double-precision limits (nInt and nFrac 1
// and 3 when their sum is below 1; zero is "0.0"), integers through R02I2C1.
void nameValueLine(int channel, std::string_view left, std::string_view middle, int pos,
                   char filler);
void nameValueLineReal(int channel, std::string_view left, double value, int pos, char filler,
                       int nInt, int nFrac, int fmt);
void nameValueLineInt(int channel, std::string_view left, int value, int pos, char filler);
