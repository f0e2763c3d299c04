// The model curve of the sample: evaluateModel (volume fractions, limits,
// structure factors, intensities, sum), objectiveValue, fitDeviation.
#include "scatter/model_curves.h"

#include "core/machine_constants.h"
#include "scatter/form_factors.h"
#include "scatter/radius_distributions.h"
#include "scatter/structure_factor.h"

#include <cmath>

ModelCurvesRecord ModelCurves;

void resetModelCurves() { ModelCurves = ModelCurvesRecord{}; }

namespace {

void normalizeVolumeFractions(ModelPhase* phases, int nPhase) {
    double total = 0;
    for (int j = 0; j < nPhase; ++j) total += std::fabs(phases[j].Vf);
    if (total == 0.0) total = X02RMDC(2);
    for (int j = 0; j < nPhase; ++j) phases[j].Vf /= total;
}

struct Limits {
    double radLow = 0, radHigh = 0, cylLow = 0, cylStep = 0;
};

Limits limitsOf(const ModelPhase& p) {
    Limits l;
    if (p.phaseType == 2) {
        cylinderLimits(p.shell.Rout, p.shell.dR, l.cylLow, l.cylStep);
    } else {
        sphereLimits(p.shell.Rout, p.shell.dR, l.radLow, l.radHigh);
    }
    return l;
}

// The intensity of phase j at point k, stored in the array of its type.
double phaseIntensity(const ModelPhase& p, const Limits& l, int j, int k, double s) {
    ModelCurvesRecord& mc = ModelCurves;
    switch (p.phaseType) {
        case 1:
            mc.sphInt[j][k] = sphereIntensity(s, p.shell, l.radLow, l.radHigh) * mc.strFac[j][k];
            return mc.sphInt[j][k];
        case 2:
            mc.cylInt[j][k] = cylinderIntensity(s, p.shell, p.len, l.cylLow, l.cylStep);
            return mc.cylInt[j][k];
        case 3:
            mc.sphInt[j][k] = sphereIntensity(s, p.shell, l.radLow, l.radHigh);
            mc.dmbInt[j][k] = 2.0 * (SINCF(2.0 * s * p.shell.Rout) + 1.0) * mc.sphInt[j][k];
            return mc.dmbInt[j][k];
        case 4:
            mc.elpInt[j][k] = ellipsoidIntensity(s, p.Rell, p.nu);
            return mc.elpInt[j][k];
        default: return 0.0;  // a phase of no known type adds nothing
    }
}

}  // namespace

int evaluateModel(ModelPhase* phases, int nPhase, double cSys, const double* s, int nPts) {
    ModelCurvesRecord& mc = ModelCurves;
    normalizeVolumeFractions(phases, nPhase);
    Limits limits[kMaxPhases];
    SphereInteraction spheres[kMaxPhases];
    for (int j = 0; j < nPhase; ++j) {
        limits[j] = limitsOf(phases[j]);
        spheres[j] = {phases[j].phaseType, phases[j].Vf, phases[j].Rhs, phases[j].tau};
    }
    int status = structureFactors(nPhase, spheres, cSys, s, nPts, &mc.strFac[0][0], kMaxPoints);
    for (int k = 0; k < nPts; ++k) {
        double sum = 0;
        for (int j = 0; j < nPhase; ++j) sum += phases[j].Vf * phaseIntensity(phases[j], limits[j], j, k, s[k]);
        mc.sumCurve[k] = sum;
    }
    return status;
}

double objectiveValue(const double* I, const double* w, int nPts) {
    ModelCurvesRecord& mc = ModelCurves;
    double up = 0, down = 0;
    for (int k = 0; k < nPts; ++k) {
        up += I[k] * mc.sumCurve[k] * w[k] * w[k];
        down += (mc.sumCurve[k] * w[k]) * (mc.sumCurve[k] * w[k]);
    }
    mc.scaleB = down > 0 ? up / down : 0.0;
    double f = 0;
    for (int k = 0; k < nPts; ++k) {
        double r = (I[k] - mc.scaleB * mc.sumCurve[k]) * w[k];
        f += r * r;
    }
    return f;
}

double fitDeviation(const double* I, const double* err, int nPts) {
    ModelCurvesRecord& mc = ModelCurves;
    mc.sigmaFit = 0;
    if (nPts < 2) return 0;
    double sum = 0;
    for (int k = 0; k < nPts; ++k) {
        double r = (I[k] - mc.scaleB * mc.sumCurve[k]) / err[k];
        sum += r * r;
    }
    mc.sigmaFit = std::sqrt(sum / (nPts - 1));
    return mc.sigmaFit;
}
