// Steps of the measured-curve input shared by its files: writeNameValue, setBaseName,
// convertAngularUnits, askFraction, reduceCurve, makePositiveAndWeigh,
// frameErrorsNote, shortNumber.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "scatter/measured_curve.h"

// A name-and-value line on the terminal output.
void writeNameValue(std::string_view left, std::string_view middle, int pos, char filler);
// baseName from dataName, less directory and extension.
void setBaseName();
// The units question and the multiplication of the raw s.
void convertAngularUnits();
// The fraction question, asked until at least 2 points stay: their count,
// or -1 when the terminal input has ended.
int askFraction();
// The first `count` raw points joined to at most 101 into fitCurve.
void reduceCurve(int count);
// Intensities and errors of fitCurve made positive, and the weights.
void makePositiveAndWeigh();
// The weights w = (1/Err) / sqrt(sum of (I/Err)^2) of fitCurve.
void computeWeights();
// Why the last data set read by TAVREAD gave no errors from an error frame
// that counts (when its errors are all zero).
const std::string& frameErrorsNote();
// A number as a short text for the notes of the curve input.
std::string shortNumber(double v);
// The words of a reply or a data line, separated by blanks, tabs, commas
// and semicolons.
std::vector<std::string> separatedWords(std::string_view text);
