// Method 12, B-F-G-S with simple bounds: the driver that adapts E4DataSet to
// the bounded quasi-Newton family (E04JAF, E04JBF and their searches).
#pragma once

// Runs the bounded quasi-Newton search from xEnd inside bL..bU.  flag is a
// scratch integer of the caller; it receives the return code of the family
// (0 normal end).  iFlag of the data set and iStat(row::methodDone) are not
// touched.
void E4JAF1(int& flag);

// Method 12 as RUN and CONTINUE start it: nothing when no variable is free,
// otherwise E4JAF1 with a scratch flag (iFlag stays as it was).  This is
// what the first-order driver does for method 12 before it hands over.
void boundedMethodSearch(int& iFlag);
