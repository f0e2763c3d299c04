// The downhill simplex search (Nelder and Mead), method 15: E04DSMNM and the
// reset of its saved simplex.
#pragma once

// Runs the search on E4DataSet; iFlag is 0 on return.
void E04DSMNM(int& iFlag);
// Forgets the saved simplex (the program's start state).
void resetSimplexSearch();
