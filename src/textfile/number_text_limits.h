// Limits of the number and text conversions, taken once from the machine
// constants: realTextLimits, integerTextLimits (used by the R02 converters).
#pragma once

// Limits of the real-to-text conversion of one precision.
struct RealTextLimits {
    int S = 0;     // greatest number of significant digits
    int L = 0;     // largest decimal exponent
    int X = 0;     // width of the exponent
    double Z = 0;  // magnitudes below this print as zero
};

// Type 1 gives the single-precision limits, any other type the double ones.
const RealTextLimits& realTextLimits(int type);

// Limits of the text-to-number conversions and of the tolerant integer part.
struct IntegerTextLimits {
    int largest = 0;          // largest integer
    int largestDigits = 0;    // its decimal digits
    int maxDecExp = 0;        // truncated log10 of rMax
    int minDecExp = 0;        // truncated log10 of rMin (negative)
    double rMin = 0;
    double rMax = 0;
    double eps = 0;           // relative spacing
};

const IntegerTextLimits& integerTextLimits();
