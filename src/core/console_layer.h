// Console layer: I05ASK, I05RSL, I05RSLD, I05MES, E04MES, I05ERR, I05LINE,
// through which everything the program says or reads at the console passes.
#pragma once

#include <string>
#include <string_view>

// Writes a prompt on outUnit and leaves the cursor behind ": ".
void I05ASK(std::string_view text, int cursor);

// Reads one line from `channel` into `line` (its size is the field width;
// the line comes back blank-padded to it).  `length` is the trimmed length
// after comment characters are cut.  status 0 good, 1 end of file,
// -1 read failure, -2 zero field width.  A channel below 1 stops the program.
void I05RSL(int channel, std::string& line, int& length, std::string_view commentChars,
            int& status);
// As I05RSL; a non-empty field that came in is kept on an empty reply.
void I05RSLD(int channel, std::string& line, int& length, std::string_view commentChars,
             int& status);

// Message on the console (channel -1), one leading blank, up to 256 characters.
void I05MES(std::string_view text);
// Monitor message on dwUnit (and the terminal in interactive mode when
// dwUnit is a file), one leading blank, cut at 80 characters.
void E04MES(std::string_view text);
// Message for a failed input/output operation.
void I05ERR(std::string_view tag, int iostat);
// One line with one leading blank on `channel` (channel convention:
// below 1, 5 and 6 are the terminal).  An empty text writes nothing.
void I05LINE(int channel, std::string_view text, int& status);

// Maps a channel to the one written to: below 1, 5 and 6 become outUnit.
int writerChannel(int channel);
