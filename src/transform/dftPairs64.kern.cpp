#include "transform/dft_pairs.kern.h"

namespace tevs::TEVS_LEVEL_NS {

extern const DftPairKernels<double> dftPairs64 = dftPairKernels<double>();

}   // namespace tevs::TEVS_LEVEL_NS
