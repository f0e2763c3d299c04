// make_synthetic_sphere: writes the curve of a polydisperse sphere with noise
// as a three-column text file and as a two-frame binary frame set.
//
// Usage: make_synthetic_sphere [directory] [noise] [seed]
//   writes synsphere.dat, S01000.sax with S01001.QAX (the axis) and
//   S01000.sub with S01001.I1D (frame 1 intensities, frame 2 errors).
// The model: homogeneous spheres of mean radius 50 angstrom, Schulz width
// 5 angstrom, contrast 1; 200 points of s from 0.005 to 0.204 1/angstrom
// (angular units code 1); I scaled to 1000 at the first point; relative
// Gaussian noise (default 0.03) with its size as the error of each point.
#include "platform/edit_format.h"
#include "scatter/phase_intensity.h"
#include "scatter/radius_distributions.h"

#include <fstream>
#include <iostream>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int kPoints = 200;

void writeFrameHeader(const std::string& path, const std::string& title, int frames,
                      const std::string& dataFile) {
    std::ofstream h(path);
    h << title << "\n\n"
      << formatRecords("(10I8)", FmtItems{kPoints, frames, 0, 0, 0, 0, 0, 0, 0, 0}).text << "\n"
      << dataFile << "\n";
}

void writeFrames(const std::string& path, const std::vector<std::vector<double>>& frames) {
    std::ofstream f(path, std::ios::binary);
    for (const auto& frame : frames) {
        for (double v : frame) {
            const float single = static_cast<float>(v);
            f.write(reinterpret_cast<const char*>(&single), sizeof single);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::string dir = argc > 1 ? std::string(argv[1]) + "/" : "";
    const double noise = argc > 2 ? std::stod(argv[2]) : 0.03;
    const unsigned seed = argc > 3 ? static_cast<unsigned>(std::stoul(argv[3])) : 1u;

    ShellParticle sphere;
    sphere.Rin = 0.0;
    sphere.roin = 0.0;
    sphere.Rout = 50.0;
    sphere.roout = 1.0;
    sphere.dR = 5.0;
    sphere.iDist = 2;
    double radLow = 0.0;
    double radHigh = 0.0;
    sphereLimits(sphere.Rout, sphere.dR, radLow, radHigh);

    std::vector<double> s(kPoints), truth(kPoints), I(kPoints), err(kPoints);
    for (int i = 0; i < kPoints; ++i) {
        s[i] = 0.005 + 0.001 * i;
        truth[i] = sphereIntensity(s[i], sphere, radLow, radHigh);
    }
    const double scale = 1000.0 / truth[0];
    std::mt19937 generator(seed);
    std::normal_distribution<double> normal(0.0, 1.0);
    for (int i = 0; i < kPoints; ++i) {
        truth[i] *= scale;
        err[i] = noise * truth[i];
        I[i] = truth[i] + err[i] * normal(generator);
    }

    std::ofstream text(dir + "synsphere.dat");
    text << "Synthetic curve: polydisperse spheres R = 50 A, Schulz width 5 A, noise "
         << noise << "\n";
    text << "q [1/angstrom]   I   dI\n";
    for (int i = 0; i < kPoints; ++i)
        text << formatRecords("(1P,3E16.7)", FmtItems{s[i], I[i], err[i]}).text << "\n";

    writeFrameHeader(dir + "S01000.sax", "Synthetic sphere curve, axis", 1, "S01001.QAX");
    writeFrames(dir + "S01001.QAX", {s});
    writeFrameHeader(dir + "S01000.sub", "Synthetic sphere curve", 2, "S01001.I1D");
    writeFrames(dir + "S01001.I1D", {I, err});
    std::cout << " Written: synsphere.dat, S01000.sax, S01001.QAX, S01000.sub, S01001.I1D\n";
    return 0;
}
