#include "transform/dft.kern.h"

namespace tevs::TEVS_LEVEL_NS {

extern const DftKernels<double> dft64 = dftKernels<double>();

}   // namespace tevs::TEVS_LEVEL_NS
