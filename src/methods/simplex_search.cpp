// The downhill simplex search of Nelder and Mead, E04DSMNM: the regular
// simplex, the pass with its table, reflection, extrapolation, contraction
// and reduction, and CONTINUE on the stored simplex.
#include "methods/simplex_search.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "objective/computational_noise.h"
#include "objective/target_function.h"
#include "platform/units.h"
#include "textfile/prompts.h"

#include <cmath>

namespace {

constexpr std::string_view kTag = "E04DSMNM";

// State that outlives a call, so that CONTINUE goes on with the simplex.
struct SimplexState {
    double n = 0;     // number of free variables, the divisor of the centroid
    int nVert = 0;    // number of vertices
    double fLowPrev = 0;
    Vec1<double, kMaxVar> c, r, e, q;  // centroid, reflected, extrapolated, contracted
};

SimplexState simplex;

E4DataSetRecord& ds() { return E4DataSet; }
int level() { return ds().iStat(row::messageLevel); }
int out() { return writerChannel(sysinf.dwUnit); }
bool isFree(int i) { return ds().iFixer(i) != 0; }

double& vertex(int k, int i) { return ds().Hesse(i, k); }
double& vertexValue(int k) { return ds().Hdiag(k); }

void writeMatrix() {
    int status = 0;
    I5WRA1(out(), ds().Hesse.data(), kMaxVar, ds().nVar(), simplex.nVert, "", status);
}

void writeValues() {
    int status = 0;
    write(out(), "(A)", " vertex function values:");
    I5WRA1(out(), ds().Hdiag.data(), 1, 1, simplex.nVert, "", status);
}

void writePoint(const char* valueText, const char* pointText, double f, Vec1<double, kMaxVar>& p) {
    if (level() <= 7) return;
    int status = 0;
    write(out(), std::string("(\"") + valueText + "\",1P,G14.6,/,\"" + pointText + "\")", f);
    I5WRA1(out(), p.data(), 1, 1, ds().nVar(), "", status);
}

void replaced(const char* how) {
    if (level() > 7) write(out(), "(\" largest point has been replaced by the\",A)", how);
}

// Step sizes of the regular simplex from the mean initial step.
void simplexSizes(double& step, double& step1, double& step2) {
    int nFree = 0;
    double sum = 0;
    for (int i = 1; i <= ds().nVar(); ++i) {
        if (!isFree(i)) continue;
        ++nFree;
        sum += ds().xStep(i);
    }
    simplex.n = nFree;
    simplex.nVert = nFree + 1;
    step = nFree > 0 ? sum / nFree : 0.0;
    double p = nFree > 0 ? step / (nFree * 1.4142135623730951) : 0.0;
    double root = std::sqrt(static_cast<double>(nFree) + 1.0) - 1.0;
    step1 = (nFree + root) * p;
    step2 = root * p;
}

void estimateWhatIsMissing() {
    E4DataSetRecord& d = ds();
    int err = 0;
    if (d.iStat(row::xStepSet) == 0) E4ERR1(d.xStart.data(), d.fStart, err, kTag);
    if (d.iStat(row::rFTolSet) == 0) {
        Vec1<double, kMaxVar> xTol;
        double fTol = 0;
        E4TOL1(d.xStart.data(), d.fStart, xTol.data(), fTol, err, kTag);
    }
}

void buildVertices(double step1, double step2) {
    E4DataSetRecord& d = ds();
    const int nv = d.nVar();
    const auto start = d.xStart;
    for (int k = 1; k <= simplex.nVert; ++k) {
        int freeNo = 0;
        for (int i = 1; i <= nv; ++i) {
            vertex(k, i) = start(i);
            if (!isFree(i) || k == 1) continue;
            ++freeNo;
            vertex(k, i) += freeNo == k - 1 ? step1 : step2;
        }
    }
    vertexValue(1) = d.fStart;
    for (int k = 2; k <= simplex.nVert; ++k) {
        for (int i = 1; i <= nv; ++i) d.xStart(i) = vertex(k, i);
        vertexValue(k) = E4FUN1(d.xStart.data());
    }
    simplex.fLowPrev = d.fStart;
    simplex.c = simplex.r = simplex.e = simplex.q = start;
}

void startReport(double step, double step1, double step2) {
    if (level() <= 0) return;
    write(out(),
          "(1X,/,1X,A6,\" --- information at the start of the \",\"search:\",/,/,"
          "\" step \",20(\"-\"),1P,G14.6,/,\" step1 \",19(\"-\"),1P,G14.6,/,"
          "\" step2 \",19(\"-\"),1P,G14.6,/,\" starting function value -\",1P,G14.6,/,"
          "\" initial vertex coordinates:\")",
          kTag, step, step1, step2, ds().fStart);
    writeMatrix();
    writeValues();
    write(out(), "(1X,70(\"-\"))");
}

void buildSimplex() {
    E4DataSetRecord& d = ds();
    if (d.iStat(row::functionEvaluations) == 0 || d.iStat(row::fSet) == 0) d.fStart = E4FUN1(d.xStart.data());
    estimateWhatIsMissing();
    double step = 0, step1 = 0, step2 = 0;
    simplexSizes(step, step1, step2);
    buildVertices(step1, step2);
    startReport(step, step1, step2);
}

// The largest and the least vertex, in one walk.
void extremes(int& jh, int& jl) {
    jh = jl = 1;
    for (int k = 2; k <= simplex.nVert; ++k) {
        if (vertexValue(k) > vertexValue(jh)) {
            jh = k;
        } else if (vertexValue(k) < vertexValue(jl)) {
            jl = k;
        }
    }
}

void passTable(int passes, int limit, int jl, double fL) {
    if (level() <= 0) return;
    if (passes == 1 || passes % 10 == 0)
        write(out(), "(\" E04DSMNM --- |# succ. | NFE rem.|      f      |\",\"  deltaf  |\")");
    write(out(), "(14X,\"|\",I8,\"|\",I9,\"|\",1P,G12.5,\" |\",1P,G10.3,\"|\")", passes,
          limit - ds().iStat(row::functionEvaluations), vertexValue(jl), fL - simplex.fLowPrev);
}

void setVertex(int k, const Vec1<double, kMaxVar>& p, double f) {
    for (int i = 1; i <= ds().nVar(); ++i) vertex(k, i) = p(i);
    vertexValue(k) = f;
}

double evaluate(Vec1<double, kMaxVar>& p) { return E4FUN1(p.data()); }

void centroidAndReflection(int jh) {
    for (int i = 1; i <= ds().nVar(); ++i) {
        if (!isFree(i)) continue;
        double sum = 0;
        for (int k = 1; k <= simplex.nVert; ++k) {
            if (k != jh) sum += vertex(k, i);
        }
        simplex.c(i) = sum / simplex.n;
        simplex.r(i) = 2.0 * simplex.c(i) - vertex(jh, i);
    }
}

void reduce(int jl) {
    E4DataSetRecord& d = ds();
    for (int k = 1; k <= simplex.nVert; ++k) {
        if (k == jl) continue;
        for (int i = 1; i <= d.nVar(); ++i) {
            if (isFree(i)) vertex(k, i) = (vertex(k, i) + vertex(jl, i)) * 0.5;
            d.xStart(i) = vertex(k, i);
        }
        vertexValue(k) = E4FUN1(d.xStart.data());
    }
    if (level() > 7) write(out(), "(A)", " simplex has been reduced by half");
}

// One change of the simplex after the stop test: steps 7 to 12.
void move(int jh, int jl, double fH, double fL) {
    centroidAndReflection(jh);
    double fR = evaluate(simplex.r);
    writePoint(" reflected point function value --------", " reflected point coordinates:", fR, simplex.r);
    if (fR <= fL) {
        for (int i = 1; i <= ds().nVar(); ++i) {
            if (isFree(i)) simplex.e(i) = 2.0 * simplex.r(i) - simplex.c(i);
        }
        double fE = evaluate(simplex.e);
        writePoint(" extrapolated point function value -----", " extrapolated point coordinates:", fE,
                   simplex.e);
        bool reflect = fR < fE;
        setVertex(jh, reflect ? simplex.r : simplex.e, reflect ? fR : fE);
        replaced(reflect ? " reflected one" : " extrapolated one");
        return;
    }
    if (fR <= fH) {
        setVertex(jh, simplex.r, fR);
        replaced(" reflected one");
        double s = vertexValue(jh == 1 ? 2 : 1);
        for (int k = 1; k <= simplex.nVert; ++k) {
            if (k != jh && vertexValue(k) > s) s = vertexValue(k);
        }
        if (level() > 7) write(out(), "(\" second-largest function value ---------\",1P,G14.6)", s);
        if (fR <= s) return;
    }
    for (int i = 1; i <= ds().nVar(); ++i) {
        if (isFree(i)) simplex.q(i) = (vertex(jh, i) + simplex.c(i)) * 0.5;
    }
    double fC = evaluate(simplex.q);
    writePoint(" contracted point function value -------", " contracted point coordinates:", fC, simplex.q);
    if (fC <= fH) {
        setVertex(jh, simplex.q, fC);
        replaced(" contracted one");
        return;
    }
    reduce(jl);
}

void endReport(int passes, int limit) {
    if (level() <= 0) return;
    write(out(), "(1X,/,1X,A,\" --- search stopped. the reason:\")", kTag);
    if (ds().iStat(row::functionEvaluations) < limit) {
        write(out(), "(14X,\"all convergence criteria have been satisfied.\")");
    } else {
        write(out(), "(14X,\"exceeded number of function evaluations.\")");
    }
    write(out(),
          "(14X,\"return to monitor program after\",I7,\" successes\",/,14X,"
          "\"total number of function evaluations =\",I9,\".\",/)",
          passes, ds().iStat(row::functionEvaluations));
}

void finish(int jl, int passes, int& iFlag) {
    E4DataSetRecord& d = ds();
    for (int i = 1; i <= d.nVar(); ++i) d.xStart(i) = d.xEnd(i) = vertex(jl, i);
    d.fStart = d.fEnd = vertexValue(jl);
    d.iStat(row::methodDone) = d.iStat(row::methodRunning);
    iFlag = 0;
    d.iStat(row::iterations) += passes;
}

void passHeader(int passes) {
    if (level() <= 3) return;
    write(out(), "(1X,/,\" vertex coordinates at \",I7,\" iteration:\")", passes);
    writeMatrix();
    writeValues();
}

}  // namespace

void resetSimplexSearch() { simplex = SimplexState{}; }

void E04DSMNM(int& iFlag) {
    E4DataSetRecord& d = ds();
    iFlag = 0;
    const int limit = d.iStat(row::functionEvaluations) + d.iStat(row::maxNFE);
    bool carryOn = d.iStat(row::computationMode) == 1 && d.iStat(row::methodRunning) == d.iStat(row::methodDone) && simplex.nVert > 0;
    if (!carryOn) buildSimplex();
    int passes = 0;
    while (true) {
        passHeader(passes);
        int jh = 1, jl = 1;
        extremes(jh, jl);
        double fH = vertexValue(jh), fL = vertexValue(jl);
        if (level() > 7)
            write(out(), "(\" largest function value no.\",I9,\" ) -\",1P,G14.6,/,"
                         "\" least function value no.\",I9,\" ) ---\",1P,G14.6)",
                  jh, fH, jl, fL);
        passTable(passes, limit, jl, fL);
        simplex.fLowPrev = fL;
        d.deltaF = fH - fL;
        if (std::fabs(d.deltaF) < (std::fabs(fL) + 1.0) * d.rFTol || d.iStat(row::functionEvaluations) > limit) {
            endReport(passes, limit);
            finish(jl, passes, iFlag);
            return;
        }
        move(jh, jl, fH, fL);
        ++passes;
    }
}
