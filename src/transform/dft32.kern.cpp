#include "transform/dft.kern.h"

namespace tevs::TEVS_LEVEL_NS {

extern const DftKernels<float> dft32 = dftKernels<float>();

}   // namespace tevs::TEVS_LEVEL_NS
