// Tests of the form factors: sphereAmp and SINCF at their switches, the
// one-radius sphere, the cylinder and ellipsoid averages, the dumbbell.
#include "scatter/form_factors.h"
#include "scatter/phase_intensity.h"

#include "independent_quadrature.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

const double kPi = std::acos(-1.0);

// Amplitude of a homogeneous sphere through the spherical Bessel function j1.
double sphereAmplitude(double x) { return x == 0.0 ? 1.0 : 3.0 * std::sph_bessel(1, x) / x; }

// Intensity of a homogeneous sphere of unit contrast.
double homogeneousSphere(double s, double R) {
    const double f = sphereAmplitude(s * R);
    return 4.0 / 3.0 * kPi * R * R * R * f * f;
}

// Orientation average of a homogeneous cylinder of unit contrast by Simpson's rule.
double homogeneousCylinder(double s, double R, double L) {
    auto integrand = [&](double u) {
        const double a = s * R * std::sqrt(1.0 - u * u);
        const double b = 0.5 * s * L * u;
        const double f = a == 0.0 ? 1.0 : 2.0 * std::cyl_bessel_j(1.0, a) / a;
        const double t = b == 0.0 ? 1.0 : std::sin(b) / b;
        return f * f * t * t;
    };
    return kPi * R * R * L * simpson(integrand, 0.0, 1.0, 4000);
}

class FormFactors : public ::testing::Test {
protected:
    void SetUp() override { resetFormArgs(); }
};

TEST_F(FormFactors, SphereAmpTakesTheClosedFormFromExactlyOneTenth) {
    // 1 - x^2/10 + x^4/280 - ... at 0.1; the short series gives 0.99900031914.
    EXPECT_NEAR(sphereAmp(0.1), 0.99900035707672709177, 1e-13);
    EXPECT_NEAR(sphereAmp(std::nextafter(0.1, 0.0)), 0.99900031914, 1e-15);
    EXPECT_EQ(sphereAmp(0.0), 1.0);
    EXPECT_NEAR(sphereAmp(0.5), 0.97522218381639941316, 1e-14);
    // Zeros of tan x = x.
    for (double x : {4.493409457909064, 7.725251836937707, 10.904121659428899}) {
        EXPECT_NEAR(sphereAmp(x), 0.0, 1e-15) << x;
    }
}

TEST_F(FormFactors, HomogeneousSphereMatchesTheClosedForm) {
    const double cases[][2] = {{50.0, 0.05}, {20.0, 0.3}, {80.0, 0.011}};
    for (const auto& c : cases) {
        const double want = homogeneousSphere(c[1], c[0]);
        EXPECT_NEAR(sphereOneRadius(c[1], 0.0, 7.0, c[0], 1.0), want, 1e-10 * want);
        // Contrast 2 enters as (mean contrast)^2 times the amplitude squared: 16 times.
        EXPECT_NEAR(sphereOneRadius(c[1], 0.0, 7.0, c[0], 2.0), 16.0 * want, 1e-9 * want);
        // A core of the shell's unit contrast changes nothing.
        EXPECT_NEAR(sphereOneRadius(c[1], 0.4 * c[0], 1.0, c[0], 1.0), want, 1e-10 * want);
    }
    // At s = 0 the value is the volume with the program's 4.188790204773333.
    EXPECT_DOUBLE_EQ(sphereOneRadius(0.0, 0.0, 0.0, 1.0, 1.0), 4.188790204773333);
}

TEST_F(FormFactors, CylinderAverageIsTheVolumeAtZeroAndMatchesBesselIntegral) {
    const double R = 20.0, L = 100.0;
    const double V = 3.14159265358 * R * R * L;
    EXPECT_NEAR(cylinderOneRadius(0.0, R, 0.0, 0.0, 1.0, L), V, 1e-13 * V);
    EXPECT_NEAR(cylinderOneRadius(0.0, R, 8.0, 3.0, 1.0, L), V, 1e-13 * V);
    for (double s : {0.013, 0.05, 0.12}) {
        const double want = homogeneousCylinder(s, R, L);
        EXPECT_NEAR(cylinderOneRadius(s, R, 0.0, 0.0, 1.0, L), want, 1e-9 * want) << s;
        EXPECT_NEAR(cylinderOneRadius(s, R, 10.0, 1.0, 1.0, L), want, 1e-9 * want) << s;
        // A pure core carries p^2 twice: p^4 times the cylinder of the core radius.
        const double core = homogeneousCylinder(s, 10.0, L);
        EXPECT_NEAR(cylinderOneRadius(s, R, 10.0, 1.0, 0.0, L), core / 16.0, 1e-9 * core) << s;
        EXPECT_EQ(cylinderOneRadius(s, R, -5.0, 3.0, 2.0, L),
                  cylinderOneRadius(s, R, 0.0, 3.0, 2.0, L));
    }
}

TEST_F(FormFactors, EllipsoidIsTheSphereForNuOneAndMatchesItsIntegral) {
    for (double s : {0.02, 0.07, 0.2}) {
        const double want = homogeneousSphere(s, 30.0);
        EXPECT_NEAR(ellipsoidIntensity(s, 30.0, 1.0), want, 1e-11 * want) << s;
        const double nu = 2.5;
        auto integrand = [&](double u) {
            const double f = sphereAmplitude(std::sqrt((nu * nu - 1.0) * u * u + 1.0) * s * 30.0);
            return f * f;
        };
        const double V = 4.0 / 3.0 * kPi * nu * 27000.0;
        const double prolate = V * simpson(integrand, 0.0, 1.0, 4000);
        EXPECT_NEAR(ellipsoidIntensity(s, 30.0, nu), prolate, 1e-9 * prolate) << s;
    }
    // s = 0: the amplitude's limit 1, so the volume itself.
    EXPECT_NEAR(ellipsoidIntensity(0.0, 30.0, 0.5), 4.0 / 3.0 * kPi * 0.5 * 27000.0, 1e-9);
}

TEST_F(FormFactors, DumbbellIsTwiceTheSphereTimesTheTouchingInterference) {
    const ShellParticle p{5.0, 2.0, 25.0, 1.0, 0.0, 1};
    const double sphere0 = sphereOneRadius(0.0, 5.0, 2.0, 25.0, 1.0);
    EXPECT_NEAR(dumbbellIntensity(0.0, p, 0.0, 0.0), 4.0 * sphere0, 1e-12 * sphere0);
    const double s = kPi / 50.0;  // 2 s Rout = pi: the two spheres add incoherently
    const double sphere = sphereOneRadius(s, 5.0, 2.0, 25.0, 1.0);
    EXPECT_NEAR(dumbbellIntensity(s, p, 0.0, 0.0), 2.0 * sphere, 1e-12 * sphere);
    EXPECT_NEAR(dumbbellFactor(0.03, 25.0), 2.0 * (1.0 + std::sin(1.5) / 1.5), 1e-15);
}

}  // namespace
