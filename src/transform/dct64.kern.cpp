#include "transform/dct.kern.h"

namespace tevs::TEVS_LEVEL_NS {

extern const DctKernels<double> dct64 = dctKernels<double>();

}   // namespace tevs::TEVS_LEVEL_NS
