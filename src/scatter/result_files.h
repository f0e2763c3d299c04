// Result files of the fit: phase rows, test.dat, .pam, .str, .fit, .csv, the log
// vardene.log, the picture of the fit and the result table on the terminal.
#pragma once

#include <string>

// One row per phase in its edit notation, with sigmaFit at the end when asked.
void writePhaseRows(int channel, bool withSigma);
void writeTestData();
void writePamFile();
void writeStrFile();
void writeFitFile();
// <base>.csv (test.csv in a TEST run), with the .fit file: a header line
// "s,I,error,weight,model,phase1_SPH,..." and one line per point of s, I,
// Err, the weight, the scaled model and each phase's share of it.
void writeCsvFile();
// The header of the log, written on the first pass of the curve dialogue.
void writeLogHeader();
// The phase rows with sigmaFit appended to the log, which stays open.
void writeLogRows();
void closeLog();
// The picture of the fit, <base>.svg beside the .fit file (test.svg in a
// TEST run): measured, fitted and phase curves on log10 intensity.
void drawResultPicture();
// The heading and the first 72 characters of the phase rows of the .fit file.
void showResultTable();
// The name of a result file: the base name of the curve's file (test in a
// TEST run) followed by the extension.
std::string resultFileName(const char* extension);
// Opens a result file in place of an old one; false, said by name, when the
// name is an input of the fit (never overwritten) or cannot be opened.
bool openResultFile(int channel, const std::string& name);
// Closes it; a write that failed is said by name.
void closeResultFile(int channel, const std::string& name);
