// Names of the rows of the status vector iStat of E4DataSet.  Every use of
// a row goes through these names; REPORT,STATUS lists the rows by number
// with their comment texts (iStatComment).
#pragma once

namespace row {

enum : int {
    problemCode = 1,          // 0 until a problem is chosen; 1..14 test, 20 user's
    methodRunning = 2,        // method of minimization being executed
    methodDone = 3,           // method of the run whose results are held; 0 after a reset
    operationMode = 4,        // never read: the live value is sysinf.MODEE4
    computationMode = 5,      // 0 RUN, 1 CONTINUE
    terminalStopping = 6,     // terminal output stopping mode
    messageLevel = 7,         // 0..9 monitor, 10 and 11 for USERF's output
    gradientScheme = 8,       // row of the gradient-scheme table
    localTermination = 9,     // row of the local-termination table
    overallTermination = 10,  // 0 hard, 1 weak
    tolMultiplierSwitch = 11,
    hCondSwitch = 12,
    saveChannel = 20,         // channel of the storage file
    commandFileOpen = 21,
    dataFileOpen = 22,
    outputFileOpen = 23,
    annealingScratch = 28,    // a reserved row the annealing searches use
    functionEvaluations = 30,
    iterations = 31,
    gradientEvaluations = 32,
    maxNFE = 33,
    maxITR = 34,
    nVar = 35,
    nFree = 36,               // number of variables to be varied
    fSet = 37,                // set flags of the data set's fields follow
    xStartSet = 38,
    xStepSet = 39,
    rXTolSet = 40,
    rFTolSet = 41,
    tolSclSet = 42,
    deviatSet = 43,
    hCondSet = 44,
    FrlErrSet = 45,
    reserved46 = 46,          // reserved, cleared by the full reset
    finDifSet = 47,
    gEndSet = 48,
    HdiagSet = 49,
    HesseSet = 50,
    bLSet = 51,
    bUSet = 52,
    stpMaxSet = 53,
    xScaleSet = 54,
    boundsMode = 55,          // simple bounds usage mode
    cdVariable = 56,          // variable of coordinate descent, 0 all
    xScaled = 57,             // xStart and xEnd hold scaled values
    vectorTerms = 58,         // terms of a vector target function
    directSet = 59,
    R_eigenSet = 60,
    V_eigenSet = 61,
    temperSet = 65,
    NtriesT = 66,             // tries per temperature, a value
    TscedSet = 67,
    firstSeed = 97,
    secondSeed = 98,
    randomsToSkip = 99,
    userDialogue = 101,       // activator of a dialogue designed in USERF
    userType = 102,
    userTypeChange = 103,
    userOutputLevel = 104,
    userReserved = 105,
};

}  // namespace row
