// Array input and output: the readers I5LIA1, I5LRA1, R02RDI, R02RDR, the
// command-driven loaders I5LIA2, I5LRA2, I5LIN1, the writers R2WIA1,
// R02WRA1 and the word joiner R02AWL.
#pragma once

#include <string>
#include <string_view>

// Arrays are column-major with leading dimension MD: entry (i, j), 1-based,
// is a[(j - 1) * MD + i - 1]; m rows, n columns.  A vector is one column
// (m > 1, n = 1), a scalar has m = n = 1.  Values are read free-form, row
// after row: (1,1) to (1,n), then the next row, over as many lines as it
// takes.

// Reads m by n values.  On the terminal (channel below 1, 5 or 6) the prompt
// is shown at CursorPosition and the values come from inUnit; on a file the
// line holding label and marker is searched first (I05FTSF with `access`),
// and a failing search ends the read with its status.  status 0 fine, 1 a
// read failure (an unreadable item), 2 end of file, else the search's.
// `changed` is set whenever the read was reached; `fileName` names the file
// in the messages.
void I5LIA1(std::string_view prompt, std::string_view label, std::string_view marker,
            std::string_view access, std::string_view fileName, int channel, int* a, int MD, int m,
            int n, int& changed, int& status);
void I5LRA1(std::string_view prompt, std::string_view label, std::string_view marker,
            std::string_view access, std::string_view fileName, int channel, double* a, int MD,
            int m, int n, int& changed, int& status);

// I5LIA1 and I5LRA1 with an empty prompt and access "SEQ": the storage-file
// readers.
void R02RDI(int channel, int* a, int MD, int m, int n, std::string_view label,
            std::string_view marker, int& status);
void R02RDR(int channel, double* a, int MD, int m, int n, std::string_view label,
            std::string_view marker, int& status);

// Loads an array from the words of a command.  words[k - 1] is word k, a
// field of the word width; `last` is the number of words and `first` the
// index of the first value word (4 for LOAD).  Forms of the value words:
// ALL[,v] and (i:j)[,v] (a range; without v the whole array is read when
// `setFlag` is 0), v for a scalar, i[,v] for a vector, i[,j[,v]] for a
// matrix; a word beginning with E ends the dialogue.  Missing words are
// asked for at the terminal in interactive mode (MODEE4 0); in auto mode
// they are a failure.  status 0 fine (also when a question got an empty
// reply), 1 failure.  `changed` is set when a value was stored.
void I5LIA2(int* a, int MD, int m, int n, std::string_view name, std::string_view marker,
            std::string_view comment, std::string* words, int last, int first,
            std::string_view delimiters, int setFlag, int channel, std::string_view fileName,
            std::string_view access, int MODEE4, int& changed, int& status);
void I5LRA2(double* a, int MD, int m, int n, std::string_view name, std::string_view marker,
            std::string_view comment, std::string* words, int last, int first,
            std::string_view delimiters, int setFlag, int channel, std::string_view fileName,
            std::string_view access, int MODEE4, int& changed, int& status);

// Loads one integer: from `word` if it holds one (a word beginning with A
// counts as blank), else, when the value is 0, by I5LIA1 from the channel
// with the question "Enter " comment ":".  status 0 fine, 1 an unreadable
// word in auto mode, else the status of I5LIA1.
void I5LIN1(int& value, std::string_view name, std::string_view marker, std::string_view comment,
            std::string_view word, std::string_view access, int channel, std::string_view dataFile,
            int MODEE4, int& changed, int& status);

// Joins the first n word fields of `words` into `line` (its size is the
// width): the first at column 1, word k at the column behind the larger of
// the end of the text so far and (k - 1) * tab, each separator standing
// directly behind the text before it.  Trailing empty words do not count.
// status 0; 1 all words empty; -1 the line is too short; -2 a field of
// width 0.  `length` is the last column used.
void R02AWL(const std::string* words, int n, char separator, int tab, std::string& line, int& length,
            int& status);

// Writes the label line and then the array row after row, 10 integers or 5
// reals to a line joined by R02AWL (separator ",", tab 8 or 15), each row
// followed by an empty line.  Reals are written with seven significant
// digits.  status 0; -1 a dimension below 1; a positive write-failure code.
// A real that cannot be converted stops the program.
void R2WIA1(int channel, const int* a, int MD, int m, int n, std::string_view label, int& status);
void R02WRA1(int channel, const double* a, int MD, int m, int n, std::string_view label,
             int& status);
