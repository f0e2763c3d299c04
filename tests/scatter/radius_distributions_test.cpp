// Tests of the radius distributions and the polydisperse averages: the two
// densities by hand, their switches and clamps, the limits, the averages.
#include "scatter/radius_distributions.h"

#include "core/machine_constants.h"
#include "scatter/form_factors.h"
#include "scatter/phase_intensity.h"

#include "independent_quadrature.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

const double kPi = std::acos(-1.0);

double gaussian(double R, double m, double w) {
    return std::exp(-0.5 * (R - m) * (R - m) / (w * w)) / (std::sqrt(2.0 * kPi) * w);
}

// Gamma density of mean m and standard deviation w, with the exact Gamma function.
double gammaDensity(double R, double m, double w) {
    const double k = (m / w) * (m / w), theta = m / k;
    return std::exp((k - 1.0) * std::log(R) - R / theta - std::lgamma(k) - k * std::log(theta));
}

double homogeneousAmp2(double x) {
    const double f = 3.0 * std::sph_bessel(1, x) / x;
    return f * f;
}

class RadiusDistributions : public ::testing::Test {
protected:
    void SetUp() override {
        resetRadiusDistributions();
        resetFormArgs();
    }
};

TEST_F(RadiusDistributions, SchulzByHandWithItsSeriesAndClamps) {
    // z = 5, t = 1.2: 5 exp(24 ln 1.2 - 5) / 10 / P(1/25).
    EXPECT_NEAR(distSchulz(12.0, 10.0, 2.0), 0.10649028617847461887, 1e-16);
    // A width above the mean: z is raised to 1.0000000000000004, where
    // P = 2.506628275 (1 + 0.08333333333 + 0.003472222222 - 0.00268132716 + 0.0002294720936).
    EXPECT_NEAR(distSchulz(5.0, 10.0, 20.0), 0.060657756144335267771, 1e-16);
    EXPECT_EQ(distSchulz(5.0, 10.0, 20.0), distSchulz(5.0, 10.0, 10.0 / 1.0000000000000004));
    // R = 0 counts as t = 5e-16.
    EXPECT_NEAR(distSchulz(0.0, 10.0, 5.0), 5.3333278785281911019e-46, 1e-58);
    // Against the exact Gamma density: the short series agrees to about 1e-9.
    for (double R : {80.0, 100.0, 117.0}) {
        const double exact = gammaDensity(R, 100.0, 10.0);
        EXPECT_NEAR(distSchulz(R, 100.0, 10.0), exact, 3e-9 * exact) << R;
    }
}

TEST_F(RadiusDistributions, PolydispersityTestAndLimits) {
    EXPECT_TRUE(isPolydisperse(1e-6, 1.0));
    EXPECT_FALSE(isPolydisperse(0.99e-6, 1.0));
    EXPECT_FALSE(isPolydisperse(-5.0, 100.0));
    double lo = 0, hi = 0;
    sphereLimits(100.0, 10.0, lo, hi);
    EXPECT_EQ(lo, 70.0);
    EXPECT_EQ(hi, 130.0);
    sphereLimits(10.0, 5.0, lo, hi);
    EXPECT_EQ(lo, 1.4901161193847656e-08);  // sqrt(2^-52)
    EXPECT_EQ(hi, 25.0);
    cylinderLimits(100.0, 10.0, lo, hi);
    EXPECT_EQ(lo, 70.0);
    EXPECT_EQ(hi, 6.0);
    cylinderLimits(10.0, 5.0, lo, hi);
    EXPECT_EQ(lo, 1.4901161193847656e-08);
    EXPECT_NEAR(hi, 2.5, 2e-9);
}

TEST_F(RadiusDistributions, PolydisperseSphereIsTheUnnormalizedRadialIntegral) {
    // Homogeneous sphere of contrast 2: the integrand is 2 (4 pi/3) R^3 F(sR)^2 D(R).
    const ShellParticle gaussPhase{0.0, 5.0, 100.0, 2.0, 10.0, 1};
    const ShellParticle schulzPhase{-3.0, 5.0, 100.0, 2.0, 10.0, 2};
    for (double s : {0.0, 0.02, 0.045}) {
        auto form = [&](double R) {
            return 2.0 * 4.0 / 3.0 * kPi * R * R * R * (s == 0.0 ? 1.0 : homogeneousAmp2(s * R));
        };
        auto withGauss = [&](double R) { return form(R) * gaussian(R, 100.0, 10.0); };
        auto withGamma = [&](double R) { return form(R) * gammaDensity(R, 100.0, 10.0); };
        const double g = simpson(withGauss, 70.0, 130.0, 2000);
        const double z = simpson(withGamma, 70.0, 130.0, 2000);
        EXPECT_NEAR(sphereIntensity(s, gaussPhase, 70.0, 130.0), g, 1e-9 * g) << s;
        EXPECT_NEAR(sphereIntensity(s, schulzPhase, 70.0, 130.0), z, 5e-9 * z) << s;
    }
    // Just above the threshold the narrow distribution keeps only the
    // +-3 sigma mass 0.9973002039 of the contrast-weighted volume; just below
    // it the one-radius form with the mean contrast squared gives 16 V.
    const double V = 4.0 / 3.0 * kPi * 1e6;
    const ShellParticle narrow{0.0, 5.0, 100.0, 2.0, 1.01e-4, 1};
    const ShellParticle mono{0.0, 5.0, 100.0, 2.0, 0.99e-4, 1};
    EXPECT_NEAR(sphereIntensity(0.0, narrow, 100.0 - 3.03e-4, 100.0 + 3.03e-4),
                2.0 * V * 0.99730020393674, 1e-9 * V);
    EXPECT_NEAR(sphereIntensity(0.0, mono, 0.0, 0.0), 16.0 * V, 1e-9 * V);
}

TEST_F(RadiusDistributions, PolydisperseCylinderIsTheNormalizedElevenRadiusSum) {
    const ShellParticle phase{0.0, 0.0, 100.0, 1.0, 10.0, 1};
    auto orientation = [](double s, double R) {
        auto f = [&](double u) {
            const double a = s * R * std::sqrt(1.0 - u * u), b = 0.5 * s * 300.0 * u;
            const double j = a == 0.0 ? 1.0 : 2.0 * std::cyl_bessel_j(1.0, a) / a;
            const double t = b == 0.0 ? 1.0 : std::sin(b) / b;
            return j * j * t * t;
        };
        return kPi * R * R * 300.0 * simpson(f, 0.0, 1.0, 4000);
    };
    for (double s : {0.0, 0.03}) {
        double sumWC = 0.0, sumW = 0.0;
        for (int i = 0; i <= 10; ++i) {
            const double R = 70.0 + 6.0 * i, W = gaussian(R, 100.0, 10.0);
            sumWC += W * orientation(s, R);
            sumW += W;
        }
        const double want = sumWC / sumW;
        EXPECT_NEAR(cylinderIntensity(s, phase, 300.0, 70.0, 6.0), want, 1e-9 * want) << s;
    }
}

}  // namespace
