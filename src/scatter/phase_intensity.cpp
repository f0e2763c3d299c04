// Intensity of one particle of a phase, monodisperse or polydisperse:
// sphereIntensity, dumbbellIntensity, cylinderIntensity.
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
