// Number and text conversion: R02R2C1, R02R2C2, R02R2C3, R02I2C1, R02I2C2,
// R02C2R1, R02C2I1, R02AINT, R02JUST, and resetNumberText.
#pragma once

#include <string>
#include <string_view>

// The status argument err is also an input: R02R2C1, R02C2R1 and R02C2I1 write
// their messages through I05MES only when err comes in at -10 or below;
// R02R2C2 and R02R2C3 write their own message when it comes in at -6 or below.
// On return 0 is success, positive a warning, negative a failure.

// Real to left-justified text in the caller's field (its size is the field
// width; it comes back blank-padded).  nInt / nFrac: digits before / after the
// point; type 1 uses the single-precision limits, any other type the double
// ones; fmt 0 exponent form, 1 fixed when it fits else exponent form, 2 fixed
// with nFrac decimals, 3 fixed with nInt + nFrac significant digits; a
// negative fmt drops trailing zeros.  len: characters used.
// err: 10 negative width mirrored, 4 number too small, 3 mantissa shortened,
// 2 too many digits, 1 unknown layout, 0 good, -1 empty mantissa, -2 empty
// field, -3 nothing could be shown, -4 overflow.
void R02R2C1(double v, std::string& text, int nInt, int nFrac, int& len, int type, int fmt,
             int& err);

// R02R2C1 through a 32-character work field, copied to result.  resultLen is
// the number of columns of result that may be used (a value below 1 or above
// result.size() means the whole field).  A text longer than that gives
// err -3, result "*" and len 1.
void R02R2C2(std::string& result, int resultLen, double v, int nInt, int nFrac, int& len,
             int type, int fmt, int& err);

// Short form of R02R2C2: nInt 1, nFrac 3, double-precision limits.
void R02R2C3(std::string& result, int resultLen, double v, int& len, int fmt, int& err);

// Integer to left-justified text.  err -2 for a field of size 0 (with its
// message), -4 with "*" when the digits do not fit.
void R02I2C1(int i, std::string& text, int& len, int& err);

// R02I2C1 through a 32-character work field; resultLen as for R02R2C2.  A text
// that does not fit gives its message whatever err is, err -4, result "*".
void R02I2C2(std::string& result, int resultLen, int i, int& len, int& err);

// Text to double.  Blanks and control characters anywhere are ignored; a sign
// behind the mantissa starts the exponent ("1.5-3" is 0.0015).  err 2 for an
// empty text (value 0), -1 for a failure (the mantissa collected so far).
double R02C2R1(std::string_view text, int& err);

// Text to integer.  A text with "E", "D" or "." is read as a real and taken
// to its integer part.  err 2 empty (value 0); 1 read from a real text;
// -1 not a number; -2 too many digits or integer overflow (an overflowing
// digit string gives the value before that digit); -3 no digit; -4 a real
// below 1 in magnitude.  Failures other than the overflow give 0.
int R02C2I1(std::string_view text, int& err);

// Tolerant integer part: a value a hair under a whole number counts as that
// number.  err -1 (plain integer part) for magnitudes beyond the precision.
double R02AINT(double v, int& err);

// Moves what stands in columns first..last (1-based) of text to the left
// (mode 'L') or right ('R') end of those columns, either case.
// err -1 empty text, -2 wrong offsets, -3 wrong mode.
void R02JUST(std::string& text, int first, int last, char mode, int& err);

// Forgets the limits taken from the machine constants (first-call state).
void resetNumberText();
