// resetScatteringFit: the start state of the scattering fit's records.
#include "scatter/scattering_reset.h"

#include "scatter/answers_file.h"
#include "scatter/form_factors.h"
#include "scatter/measured_curve.h"
#include "scatter/model_curves.h"
#include "scatter/phases.h"
#include "scatter/radius_distributions.h"
#include "scatter/structure_factor.h"

void resetScatteringFit() {
    resetFitSession();
    resetAnswersFile();
    resetMeasuredCurve();
    resetModelCurves();
    resetFormArgs();
    resetRadiusDistributions();
    resetStructureFactor();
}
