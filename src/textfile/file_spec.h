// File specifications: R02PFS, R02CFS, R02PFN, R02CFN, R02FSE, Z03FSLEN,
// I05EFND and Z1OPN1, for the file systems FAT, FAT32, UNIX and VMS.
#pragma once

#include <array>
#include <string>
#include <string_view>

// The six fields of a specification, in this order.  Each is a blank-padded
// text whose size is its width (at least 16).
enum SpecFieldIndex { kSpecNode = 0, kSpecDevice, kSpecDirectory, kSpecName, kSpecExtension, kSpecOther };
constexpr int kSpecFieldCount = 6;
using SpecFields = std::array<std::string, kSpecFieldCount>;

// Six blank fields of the given width.
SpecFields makeSpecFields(int width);

// Longest specification the parser takes.
constexpr int kMaxSpecLength = 256;

// Status values (err) of the family.
constexpr int kSpecBlank = 2;           // blank specification; no default (I05EFND)
constexpr int kSpecTruncated = 1;       // a field was too long and was cut
constexpr int kSpecMultiple = -1;       // a field defined twice, or a wrong character
constexpr int kSpecOrder = -2;          // fields out of order
constexpr int kSpecWrongField = -3;     // wrong field (unbalanced brackets)
constexpr int kSpecSplitter = -4;       // the word splitter failed
constexpr int kSpecNarrow = -5;         // the caller's field is too narrow
constexpr int kSpecTooLong = -6;        // the file specification is too long
constexpr int kSpecUnknownFS = -10;     // unknown file system
constexpr int kSpecUnknownElement = -11;  // unknown element word (R02FSE)

// Parses a full specification into the six fields for the file system word
// (FAT, FAT32, UNIX, VMS).  The fields are blanked first; on a failure they
// keep what was found before it.
void R02PFS(std::string_view spec, SpecFields& fields, std::string_view fileSystem, int& err);

// Composes a full specification from the six fields into spec (blanked first,
// its size is the width).
void R02CFS(std::string& spec, const SpecFields& fields, std::string_view fileSystem, int& err);

// Splits a name with its extension ("CURVE.DAT") into name and extension
// (fields of their own widths).
void R02PFN(std::string_view word, std::string& name, std::string& extension,
            std::string_view fileSystem, int& err);

// Puts a name and its extension together into word (blanked first).
void R02CFN(std::string& word, std::string_view name, std::string_view extension,
            std::string_view fileSystem, int& err);

// One element of a specification: element is "NODE", "DEVICE", "DIRECTORY",
// "NAME", "EXTENSION" or "OTHER" (whole word, either case).  result takes
// the field, len its trimmed length.
void R02FSE(std::string& result, std::string_view spec, std::string_view element,
            std::string_view fileSystem, int& len, int& err);

// Length limit of a field ("NO", "DEV", "DIR", "NA", "EX", "OT" are enough)
// in a file system; 0 when the file system has no such field.  err -10 for
// an unknown file system (the limits of "any other" are returned), -3 for an
// unknown field word (0 returned).
int Z03FSLEN(std::string_view fileSystem, std::string_view field, int& err);

// Asks for a file name with defaultSpec as the default, at column `column`,
// in the file system of sysinf.  A reply that leaves out the extension, or
// gives it as "*", takes it from the default; a reply without a name, or
// with the name "*", takes node, device, directory and name from it.  An
// empty reply or "." keeps the default.  defaultSpec comes back as the
// answer (its size is kept).  err 0 good, 2 no default, 3 no file system
// (FAT32 was set), 1 a field was cut, negative: the default could not be
// parsed (it is blanked).
void I05EFND(std::string_view prompt, std::string& defaultSpec, std::string_view commentChars,
             int column, int& err);

// Opens the file `name` on `channel` with an access word (READ, WRITE,
// SEQUENTIAL, DIRECT, APPEND) and a status word (OLD, NEW, UNKNOWN, ...).
// A double quotation mark in the name asks for a new file.  With a WRITE
// access a failure to open offers, in interactive mode with commands from
// the terminal, to type another name; name then comes back holding it (its
// size is kept).  result 0 opened, -2 empty name, otherwise the open's
// iostat.
void Z1OPN1(int channel, std::string& name, std::string_view access, std::string_view statusWord,
            int& result);
