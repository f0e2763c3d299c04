// resetScatteringFit: puts every record of the scattering fit (phases,
// session, answers file, curve, model, integrand arguments) in its start state.
#pragma once

void resetScatteringFit();
