#include "transform/dft_pairs.kern.h"

namespace tevs::TEVS_LEVEL_NS {

extern const DftPairKernels<float> dftPairs32 = dftPairKernels<float>();

}   // namespace tevs::TEVS_LEVEL_NS
