// The working scalars of E4FOM1, which outlive the call so that CONTINUE
// resumes where the last call stopped; shared by the driver's files.
#pragma once

#include "methods/search_trace.h"

#include <array>

struct FirstOrderState {
    double gNorm = 0, GKN2 = 0;  // norm of gEnd and its square
    double GKOLD = 0;            // GKN2 at the head of the iteration (methods 1, 2)
    double pathLen = 0;          // signed length of the last step; 0 at a new start
    double dirNorm = 0;          // norm of direct
    double alpha = 0, alphaMax = 0;  // first step of the linear search and its bound
    double xNorm = 0, dgSq = 0, dxdg = 0, gdg = 0;
    double restartTol = 0.2, restartD = 0;  // Beale-Powell restarts
    int cycle = -1;              // iterations since the last restart
    bool restart = false;        // Beale-Powell: the next direction is a restart
    bool arbitrary = false;      // this iteration searches along xStep
    int nSat = 0;                // criteria satisfied in this iteration
    int limITR = 0, limNFE = 0, lsSteps = 0;
    double eps = 0, rMin = 0, rBig = 0;  // machine constants of the call
};

FirstOrderState& firstOrderState();

// One trace record of the driver to its report writer.
void firstOrderEvent(int code, double value = 0, const double* point = nullptr,
                     std::array<double, 4> real = {});

// The direction of the next iteration by the rule of the method, from the
// step just made; 0, or the iFlag that ends the search (10, 11).
int newDirection(int method);
