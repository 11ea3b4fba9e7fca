#include "transform/fft.kern.h"

namespace tevs::TEVS_LEVEL_NS {

extern const FftKernels<float> fft32 = kernels<float>();

}   // namespace tevs::TEVS_LEVEL_NS
