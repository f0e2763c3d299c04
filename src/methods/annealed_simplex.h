// The downhill simplex with simulated annealing, method 18: E04DSMSA over
// the falling temperature, its inner search E04DSMS1 and the trial point
// E04DSMS2, the reset of their saved state, and the codes of their trace.
#pragma once

#include "core/e4dataset.h"
#include "methods/search_trace.h"

// The function searched: the value at x (x[0] is x(1)).
using TargetFunction = double (*)(double* x);
// The vertices of a simplex, vertex k in column k, and their values.
using SimplexVertices = Mat1<kMaxVar, kMaxVar + 1>;
using VertexValues = Vec1<double, 2 * kMaxVar + 1>;

// Runs the search on E4DataSet; iFlag is 0 on return.
void E04DSMSA(int& iFlag);

// The simplex search at temperature T: every vertex value is seen with a
// thermal fluctuation above it, every trial value with one below it.  p and
// y are the vertices and their values, pb and yb the best point ever met
// and its value (in and out), ftol the relative tolerance of the spread of
// the values, iter the evaluations allowed (in) and left over (out; below 1
// when spent, above 0 when the spread fell below the tolerance first).  On
// return vertex 1 is the least of the disturbed vertices.
void E04DSMS1(TargetFunction fun, SimplexVertices& p, VertexValues& y, Vec1<double, kMaxVar>& pb, double& yb,
              int nVar, int nVert, double ftol, int& iter, double T);

// One trial: the point psum * a - p(ihi) * b with a = (1 - fac) / (nVert - 1),
// b = a - fac (fac -1 reflects vertex ihi through the centroid of the others,
// 2 goes on twice as far, 0.5 contracts half way).  It replaces vertex ihi
// when its value, disturbed downwards, is below yhi.  Returns that
// disturbed value.
double E04DSMS2(TargetFunction fun, SimplexVertices& p, VertexValues& y, Vec1<double, kMaxVar>& psum,
                Vec1<double, kMaxVar>& pb, double& yb, int nVar, int nVert, int ihi, double& yhi, double fac,
                double T);

// Forgets the saved simplex and puts back the start seeds of the generator
// (the program's start state).
void resetAnnealedSimplex();

// Codes of the trace records of the annealed simplex.
//   Start: as the plain simplex's (real = {step, step1, step2, fStart},
//   count[0] the number of vertices, which are in Hesse and Hdiag).
//   Pass, at every selection of the vertices: pass the iteration count
//   iStat(iterations), count = {evaluations left, ilo, ihi}, value the
//   least disturbed value ylo, real = {ylo - previous ylo, yhi}.
//   Point Reflected, Extrapolated, Contracted: a trial; value its value,
//   real[0] its disturbed value, count = {ihi, 1 when it replaced vertex
//   ihi}, point the trial point.  Point Reduced: a vertex moved half way to
//   the least one; count[0] the vertex, value its new value.
//   Event Temperature after each temperature: value the temperature,
//   count = {temperature number, evaluations allowed, evaluations left}.
namespace annealed_trace {
enum : int {
    Reflected = 1,
    Extrapolated,
    Contracted,
    Reduced,
    Temperature,
};
}

// The report writer of the annealed simplex: the start block, the table of
// the iterations and the temperature lines, on dwUnit.
SearchTrace& annealedSimplexReport();
