// The .err file of the scattering fit after EVALUATE,HESSE: exact on a fit
// whose covariance is known in closed form, and right in the statistical
// sense on refits of curves that differ only in their noise.
#include "platform/edit_format.h"
#include "scatter/phase_intensity.h"
#include "scatter/radius_distributions.h"
#include "support/run_zemok.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <cstdio>
#include <map>
#include <random>
#include <sstream>
#include <vector>

namespace {

struct Estimate {
    double value = 0.0, sigma = 0.0;
};

// The rows of the parameter table by name: 1X, I4, 2X, A12, 2 E16.7.
std::map<std::string, Estimate> readErr(const std::string& text) {
    std::map<std::string, Estimate> rows;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        if (line.size() != 51 || !std::isdigit(static_cast<unsigned char>(line[4])) || line.find("undefined") != std::string::npos)
            continue;
        std::string name = line.substr(7, 12);
        name.erase(name.find_last_not_of(' ') + 1);
        rows[name] = {std::stod(line.substr(19, 16)), std::stod(line.substr(35, 16))};
    }
    return rows;
}

std::string curveText(const std::vector<double>& s, const std::vector<double>& I, const std::vector<double>& err) {
    std::string text = "Curve made by the test\ns I dI\n";
    for (std::size_t k = 0; k < s.size(); ++k) text += formatRecords("(1P,3E25.16)", FmtItems{s[k], I[k], err[k]}).text + "\n";
    return text;
}

double sphere(double s, double R, double dR) {
    ShellParticle p;
    p.Rout = R, p.roout = 1.0, p.dR = dR, p.iDist = 2;
    double low = 0.0, high = 0.0;
    sphereLimits(R, dR, low, high);
    return sphereIntensity(s, p, low, high);
}

std::string sphereRows(double vf, double R) {
    return "SPHERE\n" + std::to_string(vf) + " 0 1\n0 0 0\n0 0 0\n" + std::to_string(R) + " 10 100\n1 1 1\n0 0 0\n0 0 0\n2\n0 0 0\n";
}

// Two monodisperse spheres, R 30 and 60, I = K (0.3 P1 + 0.7 P2) without
// noise, errors 3 percent; only Vf of phase 1 is free, Vf 2 is held at 0.7.
// In a = 0.3 K and b = 0.7 K the model is linear, with covariance
// (M' W M)^-1, M = [P1 P2], W = 1/Err^2; the reported fraction is
// u = a / (a + b), so var u = g' Cov g with g = (b, -a) / (a + b)^2.  With
// no residual the Hessian of the misfit is exactly 2 M' W M / sum (I/Err)^2.
TEST(ParameterErrors, ExactOnALinearFit) {
    TempFolder dir;
    std::vector<double> s, I, err, P1, P2;
    for (int k = 0; k < 60; ++k) {
        s.push_back(0.005 + 0.003 * k);
        P1.push_back(sphere(s.back(), 30.0, 0.0));
        P2.push_back(sphere(s.back(), 60.0, 0.0));
        I.push_back(1000.0 * (0.3 * P1.back() + 0.7 * P2.back()) / P2.front());
        err.push_back(0.03 * I.back());
    }
    // The fraction 1 of the curve drops its last point.
    double F11 = 0, F12 = 0, F22 = 0;
    for (std::size_t k = 0; k + 1 < s.size(); ++k) {
        const double w = 1.0 / (err[k] * err[k]);
        F11 += P1[k] * P1[k] * w, F12 += P1[k] * P2[k] * w, F22 += P2[k] * P2[k] * w;
    }
    const double det = F11 * F22 - F12 * F12, K = 1000.0 / P2.front(), a = 0.3 * K, b = 0.7 * K;
    const double g1 = b / ((a + b) * (a + b)), g2 = -a / ((a + b) * (a + b));
    const double sigma = std::sqrt((g1 * g1 * F22 - 2 * g1 * g2 * F12 + g2 * g2 * F11) / det);

    writeFile(dir / "two.dat", curveText(s, I, err));
    writeFile(dir / "two.ans", "Two spheres\nlinear in the fractions\nEXPERIMENT\n2\n0.0\n" + sphereRows(0.5, 30) +
                                   sphereRows(0.7, 60) + "2\ntwo.dat\n1\n1.0\n");
    writeFile(dir / "free.inp", "iFixer\n1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0\n");
    writeFile(dir / "fit.cmd", "MESSAGE,0\nPROBLEM,USER\nLOAD,FILE=free.inp,IFIXER\nMETHOD,B-F-G-S\nRUN\n"
                               "LOAD,,FIN,ALL,1E-10\nEVALUATE,HESSE\nEXIT\n");
    ZemokRun run = runZemok("", {"/C=fit.cmd", "/UC=two.ans"}, dir.path());
    const std::map<std::string, Estimate> e = readErr(fileText(dir / "two.err"));
    ASSERT_EQ(e.count("1SPH Vf"), 1u) << run.out << fileText(dir / "two.err");
    EXPECT_NEAR(e.at("1SPH Vf").value, 0.3, 1e-6);
    EXPECT_NEAR(e.at("1SPH Vf").sigma, sigma, 1e-4 * sigma);
}

// examples/synthetic: spheres of radius 50 and Schulz width 5 with 3 percent
// noise, made anew with 30 seeds and fitted from radius 40, width 4.  The
// spread of the fitted values must match the errors the fit reports.
TEST(ParameterErrors, SpreadOfRefitsMatchesTheReportedErrors) {
    TempFolder dir;
    const std::string synthetic = std::string(ZEMOK_SOURCE_DIR) + "/examples/synthetic/";
    for (const char* f : {"vardene.ans", "fixed.inp"}) writeFile(dir / f, fileText(synthetic + f));
    writeFile(dir / "fit.cmd", "MESSAGE,0\nPROBLEM,USER\nLOAD,FILE=fixed.inp,IFIXER\nMETHOD,SB\nRUN\nEVALUATE,HESSE\nEXIT\n");
    std::vector<double> s, truth;
    for (int k = 0; k < 200; ++k) {
        s.push_back(0.005 + 0.001 * k);
        truth.push_back(sphere(s.back(), 50.0, 5.0));
    }
    const double scale = 1000.0 / truth.front();
    std::map<std::string, std::vector<double>> values, sigmas;
    for (unsigned seed = 1; seed <= 30; ++seed) {
        std::mt19937 generator(seed);
        std::normal_distribution<double> normal(0.0, 1.0);
        std::vector<double> I, err;
        for (double t : truth) {
            err.push_back(0.03 * t * scale);
            I.push_back(t * scale + err.back() * normal(generator));
        }
        writeFile(dir / "synsphere.dat", curveText(s, I, err));
        runZemok("", {"/C=fit.cmd", "/UC=vardene.ans"}, dir.path());
        for (const auto& [name, est] : readErr(fileText(dir / "synsphere.err"))) {
            values[name].push_back(est.value);
            sigmas[name].push_back(est.sigma);
        }
    }
    for (const char* name : {"1SPH Rout", "1SPH dR"}) {
        const std::vector<double>& v = values[name];
        ASSERT_EQ(v.size(), 30u) << name;
        double mean = 0, spread = 0, reported = 0;
        for (double x : v) mean += x / 30;
        for (double x : v) spread += (x - mean) * (x - mean) / 29;
        for (double x : sigmas[name]) reported += x * x / 30;
        spread = std::sqrt(spread), reported = std::sqrt(reported);
        std::printf("%s: spread of 30 refits %.4f, reported standard error %.4f (mean %.3f)\n", name, spread, reported, mean);
        EXPECT_NEAR(spread / reported, 1.0, 0.3) << name << ": spread " << spread << ", reported " << reported;
    }
}

}  // namespace
