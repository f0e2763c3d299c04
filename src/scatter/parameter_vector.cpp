// Mapping between the phase table and the argument vector: parameterCount,
// layoutParameters, unpackParameters.
#include "scatter/parameter_vector.h"

#include "core/e4dataset.h"
#include "scatter/phases.h"

#include <algorithm>

namespace {

// The bounded parameters of a block in the order of x.  A null entry
// stands for the cylinder length Len, which has no bounds of its own.
using Column = TripleColumn PhaseTableRecord::*;
constexpr int kMaxBlock = 8;

struct BlockShape {
    int length;
    Column members[kMaxBlock];
};

const BlockShape& blockOf(int type) {
    using R = PhaseTableRecord;
    static const BlockShape kNone{0, {}};
    static const BlockShape kSphere{8, {&R::Vf, &R::Rin, &R::roin, &R::Rout, &R::roout, &R::dR,
                                        &R::Rhs, &R::tau}};
    static const BlockShape kCylinder{7, {&R::Vf, &R::RinC, &R::roin, &R::RoutC, &R::roout,
                                          &R::dR, nullptr}};
    static const BlockShape kDumbbell{6, {&R::Vf, &R::Rin, &R::roin, &R::Rout, &R::roout, &R::dR}};
    static const BlockShape kEllipsoid{3, {&R::Vf, &R::Rell, &R::nu}};
    switch (type) {
        case kPhaseSphere: return kSphere;
        case kPhaseCylinder: return kCylinder;
        case kPhaseDumbbell: return kDumbbell;
        case kPhaseEllipsoid: return kEllipsoid;
        default: return kNone;
    }
}

int phasesInTable() { return std::clamp(PhaseTable.nPhase, 0, kMaxPhaseEntries); }

// The triple of position j of the block of phase p (0-based), with the
// lower bound of Rhs replaced by the start value of Rout.
ParamTriple layoutTriple(int p, Column member) {
    if (member == nullptr) {
        const double len = PhaseTable.Len[static_cast<std::size_t>(p)];
        return ParamTriple{len, len, len};
    }
    ParamTriple t = (PhaseTable.*member)[static_cast<std::size_t>(p)];
    if (member == &PhaseTableRecord::Rhs) t.lower = PhaseTable.Rout[static_cast<std::size_t>(p)].value;
    return t;
}

}  // namespace

int parameterCount() {
    int n = 0;
    for (int p = 0; p < phasesInTable(); ++p) {
        n += blockOf(PhaseTable.phaseType[static_cast<std::size_t>(p)]).length;
    }
    return n;
}

int layoutParameters(double* x) {
    int k = 0;  // positions used so far
    for (int p = 0; p < phasesInTable(); ++p) {
        const BlockShape& block = blockOf(PhaseTable.phaseType[static_cast<std::size_t>(p)]);
        for (int j = 0; j < block.length; ++j) {
            const ParamTriple t = layoutTriple(p, block.members[j]);
            ++k;
            x[k - 1] = t.value;
            E4DataSet.bL(k) = t.lower;
            E4DataSet.bU(k) = t.upper;
            E4DataSet.iFixer(k) = 1;
        }
    }
    E4DataSet.nVar() = k;
    E4DataSet.iStat(row::nFree) = k;
    E4DataSet.iStat(row::xStartSet) = 1;
    E4DataSet.iStat(row::bLSet) = 1;
    E4DataSet.iStat(row::bUSet) = 1;
    return k;
}

void unpackParameters(const double* x) {
    int k = 0;
    for (int p = 0; p < phasesInTable(); ++p) {
        const auto ip = static_cast<std::size_t>(p);
        const BlockShape& block = blockOf(PhaseTable.phaseType[ip]);
        for (int j = 0; j < block.length; ++j) {
            const Column member = block.members[j];
            if (member == nullptr) {
                PhaseTable.Len[ip] = x[k];
            } else {
                (PhaseTable.*member)[ip].value = x[k];
            }
            ++k;
        }
    }
}
