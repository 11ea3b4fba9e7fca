#include "transform/dct.kern.h"

namespace tevs::TEVS_LEVEL_NS {

extern const DctKernels<float> dct32 = dctKernels<float>();

}   // namespace tevs::TEVS_LEVEL_NS
