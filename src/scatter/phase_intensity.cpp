// Intensity of one particle of a phase, monodisperse or polydisperse:
// sphereIntensity, dumbbellIntensity, cylinderIntensity, sphereCurve, cylinderCurve.
#include "scatter/phase_intensity.h"

#include "scatter/form_factors.h"
#include "scatter/radius_distributions.h"

double sphereIntensity(double s, const ShellParticle& p, double radLow, double radHigh) {
    if (isPolydisperse(p.dR, p.Rout)) {
        return spherePolydisperse(s, p.Rin, p.roin, p.roout, p.Rout, p.dR, p.iDist, radLow,
                                  radHigh);
    }
    return sphereOneRadius(s, p.Rin, p.roin, p.Rout, p.roout);
}

double dumbbellIntensity(double s, const ShellParticle& p, double radLow, double radHigh) {
    return dumbbellFactor(s, p.Rout) * sphereIntensity(s, p, radLow, radHigh);
}

double cylinderIntensity(double s, const ShellParticle& p, double len, double cylLow,
                         double cylStep) {
    if (isPolydisperse(p.dR, p.Rout)) {
        return cylinderPolydisperse(s, p.Rin, p.roin, p.roout, p.Rout, p.dR, p.iDist, len,
                                    cylLow, cylStep);
    }
    return cylinderOneRadius(s, p.Rout, p.Rin, p.roin, p.roout, len);
}

void sphereCurve(const double* s, int nPts, const ShellParticle& p, double radLow,
                 double radHigh, double* out) {
    if (isPolydisperse(p.dR, p.Rout)) {
        spherePolydisperseCurve(s, nPts, p.Rin, p.roin, p.roout, p.Rout, p.dR, p.iDist, radLow,
                                radHigh, out);
        return;
    }
    for (int k = 0; k < nPts; ++k) out[k] = sphereOneRadius(s[k], p.Rin, p.roin, p.Rout, p.roout);
}

void cylinderCurve(const double* s, int nPts, const ShellParticle& p, double len, double cylLow,
                   double cylStep, double* out) {
    if (isPolydisperse(p.dR, p.Rout)) {
        cylinderPolydisperseCurve(s, nPts, p.Rin, p.roin, p.roout, p.Rout, p.dR, p.iDist, len,
                                  cylLow, cylStep, out);
        return;
    }
    CylinderFamily family;
    prepareCylinders(family, &p.Rout, 1, p.Rin, p.roin, p.roout, len);
    for (int k = 0; k < nPts; ++k) cylinderAverages(family, s[k], &out[k]);
}
