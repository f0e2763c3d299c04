// Radius distributions, polydisperse averages: distGauss, distSchulz, radiusDensity, sphereRadial,
// isPolydisperse, sphereLimits, cylinderLimits, spherePolydisperse, cylinderPolydisperse,
// and the averages for a whole curve: spherePolydisperseCurve, cylinderPolydisperseCurve.
#pragma once

// Gaussian density of mean |mean| and width |width| at |R|.  A width at or
// below sqrt(1/rBig) gives an almost-delta: exp(-ln rBig) away from the mean,
// the full peak where the distance equals the width.
double distGauss(double R, double mean, double width);

// Gamma (Schulz) density of mean `mean` and standard deviation `width` at R,
// with the program's short Stirling series for the Gamma function.  Falls
// back to distGauss for a zero width and for mean/width above 2e8; a ratio
// below 1 is raised to 1.0000000000000004 and R/mean to at least 5e-16.
double distSchulz(double R, double mean, double width);

// The density chosen by the distribution code: 1 distGauss, any other distSchulz.
double radiusDensity(double R, double mean, double width, int iDist);

// Integrand of the radial average of a sphere with core: the core-shell form
// factor A^2 / ((volR - volC) roout + roin volC) times the density at R.
// Reads sCur, argRin (a negative core counts as 0), argRoin, argRoout,
// argMean, argWidth, argDist of formArgs.
double sphereRadial(double R);

// A phase is polydisperse when dR/Ro is at or above 1e-6 (so a negative dR
// makes it monodisperse).
bool isPolydisperse(double dR, double Ro);

// Range of the radial integral of a SPHERE or DUMBBELL phase:
// max(sqrt(eps), Ro - 3 dR) to Ro + 3 dR.
void sphereLimits(double Ro, double dR, double& radLow, double& radHigh);

// First radius and step of the 11 radii of a CYLINDER phase.
void cylinderLimits(double Ro, double dR, double& cylLow, double& cylStep);

// Intensity of a polydisperse core-shell sphere at s: sphereRadial on
// [radLow, radHigh] with the 64-point rule.  The density is not renormalized
// on the range.  Sets formArgs.
double spherePolydisperse(double s, double Rin, double roin, double roout, double mean,
                          double width, int iDist, double radLow, double radHigh);

// Intensity of a polydisperse cylinder at s: the orientation averages at the
// 11 radii cylLow + i cylStep, i = 0..10, weighted by the density and
// divided by the sum of the weights.  Sets formArgs.
double cylinderPolydisperse(double s, double Rin, double roin, double roout, double mean,
                            double width, int iDist, double len, double cylLow, double cylStep);

// out[k] = spherePolydisperse(s[k], ...) for k < nPts, bit for bit, with the
// radii of the rule, their volumes and densities computed once.
void spherePolydisperseCurve(const double* s, int nPts, double Rin, double roin, double roout,
                             double mean, double width, int iDist, double radLow, double radHigh,
                             double* out);

// out[k] = cylinderPolydisperse(s[k], ...) for k < nPts, bit for bit, with
// the weights of the radii and the terms the radii share computed once.
void cylinderPolydisperseCurve(const double* s, int nPts, double Rin, double roin, double roout,
                               double mean, double width, int iDist, double len, double cylLow,
                               double cylStep, double* out);

// Forgets the machine constants kept by the distributions.
void resetRadiusDistributions();
