// E4SCT2: the function sampled on a line through the current point, the
// section file stem.sec and its picture.
#include "monitor/section.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/machine_constants.h"
#include "core/sysinf.h"
#include "methods/vector_routines.h"
#include "platform/units.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace {

constexpr int kSectionChannel = 9;
constexpr std::size_t kMaxFileName = 64;

SectionCurve curve;

// Writes the curve to stem.sec; the iostat of the open or the writing.
int writeSectionFile(const std::string& file, std::string_view title) {
    unit::OpenSpec spec{unit::Status::Replace, unit::Access::Sequential, unit::Position::AsIs};
    int st = unit::open(kSectionChannel, file, spec);
    if (st != 0) return st;
    st = write(kSectionChannel, "(1X,A)", "Surface section, " + std::string(title));
    for (int i = 0; i < curve.n && st == 0; ++i) {
        st = write(kSectionChannel, "(12X,2(1P,G25.16))", curve.X[static_cast<std::size_t>(i)],
                   curve.F[static_cast<std::size_t>(i)]);
    }
    const int stClose = unit::close(kSectionChannel);
    return st != 0 ? st : stClose;
}

}  // namespace

const SectionCurve& lastSection() { return curve; }

void E4SCT2(SectionFunction fun, double& f, double* x, const double* dirv, int n, double W, int& points,
            double& h, std::string_view stem, std::string_view title, int& err) {
    E4DataSetRecord& d = E4DataSet;
    err = 0;
    if (d.iStat(row::functionEvaluations) == 0 || d.iStat(row::fSet) == 0) {
        f = fun(x);
        d.iStat(row::fSet) = 1;
    }
    points = std::clamp(points, 3, kMaxSectionPoints);
    if (W == 0.0) {
        err = -1;
        return;
    }
    h = W / (points - 1);
    if (std::fabs(h) <= points / X02RMDC(5)) {
        write(writerChannel(sysinf.dwUnit), "(12X,'Section width = ',1P,G14.6,' is too small.',/,12X,'No profile could be obtained.')",
              W);
        err = -2;
        return;
    }
    // The trial point lives apart from x, which stays as it is.
    Vec1<double, kMaxVar> z;
    const int first = -(points / 2);
    curve.n = 0;
    for (int k = first; k <= points - 1 - points / 2; ++k) {
        int same = 0;
        E4STP1(x, z.data(), dirv, n, 1.0, k * h, same);
        const std::size_t i = static_cast<std::size_t>(k - first);
        curve.X[i] = k * h;
        curve.F[i] = fun(z.data());
        curve.n = static_cast<int>(i) + 1;
    }

    const std::string file = std::string(stem) + ".sec";
    const int st = file.size() > kMaxFileName ? unit::IOERR_OPEN_FAILED : writeSectionFile(file, title);
    if (st != 0) {
        I05MES("E4SCT2 ---E- File open error.");
        I05MES("             \"" + file + "\" was not written: " +
               (file.size() > kMaxFileName ? std::string("the name is longer than 64 characters") : unit::ioText(st)));
        err = -3;
        return;
    }
    drawSectionPicture(stem, title, curve.n, curve.X.data(), curve.F.data());
}
