#include "transform/fft.kern.h"

namespace tevs::TEVS_LEVEL_NS {

extern const FftKernels<double> fft64 = kernels<double>();

}   // namespace tevs::TEVS_LEVEL_NS
