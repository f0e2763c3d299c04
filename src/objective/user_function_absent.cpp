// USERF of a program built without a user's problem: it says so and
// declares no variables, so that the target function counts nothing.
#include "objective/user_function.h"

#include "monitor/console_layer.h"
#include "monitor/e4dataset.h"

double USERF(double* /*x*/) {
    E04MES("USERF ----E- No user's problem specified!");
    E4DataSet.nVar() = 0;
    E4DataSet.iStat(36) = 0;
    return 0.0;
}
