// Thresholds: elements below or above a level replaced, and reciprocals of bounded magnitude.
#include "tevs/threshold.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <type_traits>

#include "core/args.h"
#include "core/rounding.h"
#include "core/scale.h"
#include "telephony/threshold.table.h"

namespace tevs {
namespace {

// The magnitude of a complex element is not negative: neither is a level for it.
template <class T> Args thresholdArgs(const T* pSrc, const T* pDst, int len, Scalar<T> level) {
    return Args().ptr(pSrc).ptr(pDst).len(len).require(!kComplex<T> || level >= 0, StatusThresholdNegLevel);
}

template <class T> typename LevelOf<T>::type levelOf(Scalar<T> level) {
    using Level = typename LevelOf<T>::type;
    if constexpr (std::is_arithmetic_v<Level>) {
        return level;
    } else {
        constexpr int kFar = sizeof level == 4 ? 100 : 1000;
        const auto unit = powerOfTwo<Scalar<T>>(std::clamp(std::ilogb(level), -kFar, kFar));
        return Level{std::abs(level), std::abs(level) / unit, unit};
    }
}

// Nothing is below 0, and what is above becomes 0.
template <class T> Status limitAtZero(const T* pSrc, T* pDst, int len, bool above) {
    const size_t bytes = size_t(len) * sizeof(T);
    if (above)
        std::memset(pDst, 0, bytes);
    else if (pSrc != pDst)
        std::memcpy(pDst, pSrc, bytes);
    return StatusOk;
}
// Squares are rounded; comparing real elements rounds nothing.
template <class T, class... A> void run(void (*kernel)(const T*, T*, int, A...), const T* pSrc, T* pDst, int len, std::type_identity_t<A>... parameters) {
    if constexpr (kComplex<T>) {
        NearestRounding guard;
        kernel(pSrc, pDst, len, parameters...);
    } else {
        kernel(pSrc, pDst, len, parameters...);
    }
}

template <class T> Status limit(const T* pSrc, T* pDst, int len, Scalar<T> level, bool above, const Sides<Limit<T>>& kernel) {
    if (Status s = thresholdArgs(pSrc, pDst, len, level)) return s;
    if (kComplex<T> && level == 0) return limitAtZero(pSrc, pDst, len, above);
    run(above ? kernel.above : kernel.below, pSrc, pDst, len, levelOf<T>(level));
    return StatusOk;
}
template <class T> Status below(const T* pSrc, T* pDst, int len, Scalar<T> level, const Sides<Limit<T>>& kernel) {
    return limit(pSrc, pDst, len, level, false, kernel);
}
template <class T> Status above(const T* pSrc, T* pDst, int len, Scalar<T> level, const Sides<Limit<T>>& kernel) {
    return limit(pSrc, pDst, len, level, true, kernel);
}
template <class T> Status byCode(const T* pSrc, T* pDst, int len, Scalar<T> level, int relOp, const Sides<Limit<T>>& kernel) {
    return limit(pSrc, pDst, len, level, relOp == CmpGreater, kernel);
}

template <class T> Status replace(const T* pSrc, T* pDst, int len, Scalar<T> level, T value, Replace<T> kernel) {
    if (Status s = thresholdArgs(pSrc, pDst, len, level)) return s;
    run(kernel, pSrc, pDst, len, levelOf<T>(level), value);
    return StatusOk;
}

template <class T> Status clip(const T* pSrc, T* pDst, int len, T levelLT, T valueLT, T levelGT, T valueGT, Clip<T> kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len).require(levelGT >= levelLT, StatusThresholdErr)) return s;
    kernel(pSrc, pDst, len, levelLT, valueLT, levelGT, valueGT);
    return StatusOk;
}

template <class T> Status magnitude(const T* pSrc, T* pDst, int len, T level, Limit<T> kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len).require(level >= 0, StatusThresholdErr)) return s;
    kernel(pSrc, pDst, len, level);
    return StatusOk;
}

template <class T> Status invert(const T* pSrc, T* pDst, int len, Scalar<T> level, Invert<T> kernel) {
    if (Status s = Args().ptr(pSrc).ptr(pDst).len(len).require(level >= 0, StatusThresholdNegLevel)) return s;
    NearestRounding guard;
    return kernel(pSrc, pDst, len, levelOf<T>(level)) ? WarnInvZero : StatusOk;
}

}   // namespace
}   // namespace tevs

using namespace tevs;

Status tevsThreshold_16s(const int16_t* pSrc, int16_t* pDst, int len, int16_t level, int relOp) {
    return byCode(pSrc, pDst, len, level, relOp, threshold->limit16s);
}
Status tevsThreshold_16s_I(int16_t* pSrcDst, int len, int16_t level, int relOp) { return byCode(pSrcDst, pSrcDst, len, level, relOp, threshold->limit16s); }
Status tevsThreshold_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, int16_t level, int relOp) {
    return byCode(pSrc, pDst, len, level, relOp, threshold->limit16sc);
}
Status tevsThreshold_16sc_I(Complex16s* pSrcDst, int len, int16_t level, int relOp) {
    return byCode(pSrcDst, pSrcDst, len, level, relOp, threshold->limit16sc);
}
Status tevsThreshold_32f(const float* pSrc, float* pDst, int len, float level, int relOp) { return byCode(pSrc, pDst, len, level, relOp, threshold->limit32f); }
Status tevsThreshold_32f_I(float* pSrcDst, int len, float level, int relOp) { return byCode(pSrcDst, pSrcDst, len, level, relOp, threshold->limit32f); }
Status tevsThreshold_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, float level, int relOp) {
    return byCode(pSrc, pDst, len, level, relOp, threshold->limit32fc);
}
Status tevsThreshold_32fc_I(Complex32f* pSrcDst, int len, float level, int relOp) { return byCode(pSrcDst, pSrcDst, len, level, relOp, threshold->limit32fc); }
Status tevsThreshold_64f(const double* pSrc, double* pDst, int len, double level, int relOp) {
    return byCode(pSrc, pDst, len, level, relOp, threshold->limit64f);
}
Status tevsThreshold_64f_I(double* pSrcDst, int len, double level, int relOp) { return byCode(pSrcDst, pSrcDst, len, level, relOp, threshold->limit64f); }
Status tevsThreshold_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, double level, int relOp) {
    return byCode(pSrc, pDst, len, level, relOp, threshold->limit64fc);
}
Status tevsThreshold_64fc_I(Complex64f* pSrcDst, int len, double level, int relOp) { return byCode(pSrcDst, pSrcDst, len, level, relOp, threshold->limit64fc); }

Status tevsThreshold_LT_16s(const int16_t* pSrc, int16_t* pDst, int len, int16_t level) { return below(pSrc, pDst, len, level, threshold->limit16s); }
Status tevsThreshold_LT_16s_I(int16_t* pSrcDst, int len, int16_t level) { return below(pSrcDst, pSrcDst, len, level, threshold->limit16s); }
Status tevsThreshold_LT_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, int16_t level) { return below(pSrc, pDst, len, level, threshold->limit16sc); }
Status tevsThreshold_LT_16sc_I(Complex16s* pSrcDst, int len, int16_t level) { return below(pSrcDst, pSrcDst, len, level, threshold->limit16sc); }
Status tevsThreshold_LT_32f(const float* pSrc, float* pDst, int len, float level) { return below(pSrc, pDst, len, level, threshold->limit32f); }
Status tevsThreshold_LT_32f_I(float* pSrcDst, int len, float level) { return below(pSrcDst, pSrcDst, len, level, threshold->limit32f); }
Status tevsThreshold_LT_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, float level) { return below(pSrc, pDst, len, level, threshold->limit32fc); }
Status tevsThreshold_LT_32fc_I(Complex32f* pSrcDst, int len, float level) { return below(pSrcDst, pSrcDst, len, level, threshold->limit32fc); }
Status tevsThreshold_LT_64f(const double* pSrc, double* pDst, int len, double level) { return below(pSrc, pDst, len, level, threshold->limit64f); }
Status tevsThreshold_LT_64f_I(double* pSrcDst, int len, double level) { return below(pSrcDst, pSrcDst, len, level, threshold->limit64f); }
Status tevsThreshold_LT_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, double level) { return below(pSrc, pDst, len, level, threshold->limit64fc); }
Status tevsThreshold_LT_64fc_I(Complex64f* pSrcDst, int len, double level) { return below(pSrcDst, pSrcDst, len, level, threshold->limit64fc); }
Status tevsThreshold_LT_32s(const int32_t* pSrc, int32_t* pDst, int len, int32_t level) { return below(pSrc, pDst, len, level, threshold->limit32s); }
Status tevsThreshold_LT_32s_I(int32_t* pSrcDst, int len, int32_t level) { return below(pSrcDst, pSrcDst, len, level, threshold->limit32s); }

Status tevsThreshold_GT_16s(const int16_t* pSrc, int16_t* pDst, int len, int16_t level) { return above(pSrc, pDst, len, level, threshold->limit16s); }
Status tevsThreshold_GT_16s_I(int16_t* pSrcDst, int len, int16_t level) { return above(pSrcDst, pSrcDst, len, level, threshold->limit16s); }
Status tevsThreshold_GT_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, int16_t level) { return above(pSrc, pDst, len, level, threshold->limit16sc); }
Status tevsThreshold_GT_16sc_I(Complex16s* pSrcDst, int len, int16_t level) { return above(pSrcDst, pSrcDst, len, level, threshold->limit16sc); }
Status tevsThreshold_GT_32f(const float* pSrc, float* pDst, int len, float level) { return above(pSrc, pDst, len, level, threshold->limit32f); }
Status tevsThreshold_GT_32f_I(float* pSrcDst, int len, float level) { return above(pSrcDst, pSrcDst, len, level, threshold->limit32f); }
Status tevsThreshold_GT_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, float level) { return above(pSrc, pDst, len, level, threshold->limit32fc); }
Status tevsThreshold_GT_32fc_I(Complex32f* pSrcDst, int len, float level) { return above(pSrcDst, pSrcDst, len, level, threshold->limit32fc); }
Status tevsThreshold_GT_64f(const double* pSrc, double* pDst, int len, double level) { return above(pSrc, pDst, len, level, threshold->limit64f); }
Status tevsThreshold_GT_64f_I(double* pSrcDst, int len, double level) { return above(pSrcDst, pSrcDst, len, level, threshold->limit64f); }
Status tevsThreshold_GT_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, double level) { return above(pSrc, pDst, len, level, threshold->limit64fc); }
Status tevsThreshold_GT_64fc_I(Complex64f* pSrcDst, int len, double level) { return above(pSrcDst, pSrcDst, len, level, threshold->limit64fc); }
Status tevsThreshold_GT_32s(const int32_t* pSrc, int32_t* pDst, int len, int32_t level) { return above(pSrc, pDst, len, level, threshold->limit32s); }
Status tevsThreshold_GT_32s_I(int32_t* pSrcDst, int len, int32_t level) { return above(pSrcDst, pSrcDst, len, level, threshold->limit32s); }

Status tevsThreshold_LTVal_16s(const int16_t* pSrc, int16_t* pDst, int len, int16_t level, int16_t value) {
    return replace(pSrc, pDst, len, level, value, threshold->replace16s.below);
}
Status tevsThreshold_LTVal_16s_I(int16_t* pSrcDst, int len, int16_t level, int16_t value) {
    return replace(pSrcDst, pSrcDst, len, level, value, threshold->replace16s.below);
}
Status tevsThreshold_LTVal_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, int16_t level, Complex16s value) {
    return replace(pSrc, pDst, len, level, value, threshold->replace16sc.below);
}
Status tevsThreshold_LTVal_16sc_I(Complex16s* pSrcDst, int len, int16_t level, Complex16s value) {
    return replace(pSrcDst, pSrcDst, len, level, value, threshold->replace16sc.below);
}
Status tevsThreshold_LTVal_32f(const float* pSrc, float* pDst, int len, float level, float value) {
    return replace(pSrc, pDst, len, level, value, threshold->replace32f.below);
}
Status tevsThreshold_LTVal_32f_I(float* pSrcDst, int len, float level, float value) {
    return replace(pSrcDst, pSrcDst, len, level, value, threshold->replace32f.below);
}
Status tevsThreshold_LTVal_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, float level, Complex32f value) {
    return replace(pSrc, pDst, len, level, value, threshold->replace32fc.below);
}
Status tevsThreshold_LTVal_32fc_I(Complex32f* pSrcDst, int len, float level, Complex32f value) {
    return replace(pSrcDst, pSrcDst, len, level, value, threshold->replace32fc.below);
}
Status tevsThreshold_LTVal_64f(const double* pSrc, double* pDst, int len, double level, double value) {
    return replace(pSrc, pDst, len, level, value, threshold->replace64f.below);
}
Status tevsThreshold_LTVal_64f_I(double* pSrcDst, int len, double level, double value) {
    return replace(pSrcDst, pSrcDst, len, level, value, threshold->replace64f.below);
}
Status tevsThreshold_LTVal_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, double level, Complex64f value) {
    return replace(pSrc, pDst, len, level, value, threshold->replace64fc.below);
}
Status tevsThreshold_LTVal_64fc_I(Complex64f* pSrcDst, int len, double level, Complex64f value) {
    return replace(pSrcDst, pSrcDst, len, level, value, threshold->replace64fc.below);
}

Status tevsThreshold_GTVal_16s(const int16_t* pSrc, int16_t* pDst, int len, int16_t level, int16_t value) {
    return replace(pSrc, pDst, len, level, value, threshold->replace16s.above);
}
Status tevsThreshold_GTVal_16s_I(int16_t* pSrcDst, int len, int16_t level, int16_t value) {
    return replace(pSrcDst, pSrcDst, len, level, value, threshold->replace16s.above);
}
Status tevsThreshold_GTVal_16sc(const Complex16s* pSrc, Complex16s* pDst, int len, int16_t level, Complex16s value) {
    return replace(pSrc, pDst, len, level, value, threshold->replace16sc.above);
}
Status tevsThreshold_GTVal_16sc_I(Complex16s* pSrcDst, int len, int16_t level, Complex16s value) {
    return replace(pSrcDst, pSrcDst, len, level, value, threshold->replace16sc.above);
}
Status tevsThreshold_GTVal_32f(const float* pSrc, float* pDst, int len, float level, float value) {
    return replace(pSrc, pDst, len, level, value, threshold->replace32f.above);
}
Status tevsThreshold_GTVal_32f_I(float* pSrcDst, int len, float level, float value) {
    return replace(pSrcDst, pSrcDst, len, level, value, threshold->replace32f.above);
}
Status tevsThreshold_GTVal_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, float level, Complex32f value) {
    return replace(pSrc, pDst, len, level, value, threshold->replace32fc.above);
}
Status tevsThreshold_GTVal_32fc_I(Complex32f* pSrcDst, int len, float level, Complex32f value) {
    return replace(pSrcDst, pSrcDst, len, level, value, threshold->replace32fc.above);
}
Status tevsThreshold_GTVal_64f(const double* pSrc, double* pDst, int len, double level, double value) {
    return replace(pSrc, pDst, len, level, value, threshold->replace64f.above);
}
Status tevsThreshold_GTVal_64f_I(double* pSrcDst, int len, double level, double value) {
    return replace(pSrcDst, pSrcDst, len, level, value, threshold->replace64f.above);
}
Status tevsThreshold_GTVal_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, double level, Complex64f value) {
    return replace(pSrc, pDst, len, level, value, threshold->replace64fc.above);
}
Status tevsThreshold_GTVal_64fc_I(Complex64f* pSrcDst, int len, double level, Complex64f value) {
    return replace(pSrcDst, pSrcDst, len, level, value, threshold->replace64fc.above);
}

Status tevsThreshold_LTValGTVal_16s(const int16_t* pSrc, int16_t* pDst, int len, int16_t levelLT, int16_t valueLT, int16_t levelGT, int16_t valueGT) {
    return clip(pSrc, pDst, len, levelLT, valueLT, levelGT, valueGT, threshold->clip16s);
}
Status tevsThreshold_LTValGTVal_16s_I(int16_t* pSrcDst, int len, int16_t levelLT, int16_t valueLT, int16_t levelGT, int16_t valueGT) {
    return clip(pSrcDst, pSrcDst, len, levelLT, valueLT, levelGT, valueGT, threshold->clip16s);
}
Status tevsThreshold_LTValGTVal_32f(const float* pSrc, float* pDst, int len, float levelLT, float valueLT, float levelGT, float valueGT) {
    return clip(pSrc, pDst, len, levelLT, valueLT, levelGT, valueGT, threshold->clip32f);
}
Status tevsThreshold_LTValGTVal_32f_I(float* pSrcDst, int len, float levelLT, float valueLT, float levelGT, float valueGT) {
    return clip(pSrcDst, pSrcDst, len, levelLT, valueLT, levelGT, valueGT, threshold->clip32f);
}
Status tevsThreshold_LTValGTVal_64f(const double* pSrc, double* pDst, int len, double levelLT, double valueLT, double levelGT, double valueGT) {
    return clip(pSrc, pDst, len, levelLT, valueLT, levelGT, valueGT, threshold->clip64f);
}
Status tevsThreshold_LTValGTVal_64f_I(double* pSrcDst, int len, double levelLT, double valueLT, double levelGT, double valueGT) {
    return clip(pSrcDst, pSrcDst, len, levelLT, valueLT, levelGT, valueGT, threshold->clip64f);
}
Status tevsThreshold_LTValGTVal_32s(const int32_t* pSrc, int32_t* pDst, int len, int32_t levelLT, int32_t valueLT, int32_t levelGT, int32_t valueGT) {
    return clip(pSrc, pDst, len, levelLT, valueLT, levelGT, valueGT, threshold->clip32s);
}
Status tevsThreshold_LTValGTVal_32s_I(int32_t* pSrcDst, int len, int32_t levelLT, int32_t valueLT, int32_t levelGT, int32_t valueGT) {
    return clip(pSrcDst, pSrcDst, len, levelLT, valueLT, levelGT, valueGT, threshold->clip32s);
}

Status tevsThreshold_LTAbs_16s(const int16_t* pSrc, int16_t* pDst, int len, int16_t level) {
    return magnitude(pSrc, pDst, len, level, threshold->magnitude16s.below);
}
Status tevsThreshold_LTAbs_16s_I(int16_t* pSrcDst, int len, int16_t level) { return magnitude(pSrcDst, pSrcDst, len, level, threshold->magnitude16s.below); }
Status tevsThreshold_LTAbs_32f(const float* pSrc, float* pDst, int len, float level) {
    return magnitude(pSrc, pDst, len, level, threshold->magnitude32f.below);
}
Status tevsThreshold_LTAbs_32f_I(float* pSrcDst, int len, float level) { return magnitude(pSrcDst, pSrcDst, len, level, threshold->magnitude32f.below); }
Status tevsThreshold_LTAbs_64f(const double* pSrc, double* pDst, int len, double level) {
    return magnitude(pSrc, pDst, len, level, threshold->magnitude64f.below);
}
Status tevsThreshold_LTAbs_64f_I(double* pSrcDst, int len, double level) { return magnitude(pSrcDst, pSrcDst, len, level, threshold->magnitude64f.below); }
Status tevsThreshold_LTAbs_32s(const int32_t* pSrc, int32_t* pDst, int len, int32_t level) {
    return magnitude(pSrc, pDst, len, level, threshold->magnitude32s.below);
}
Status tevsThreshold_LTAbs_32s_I(int32_t* pSrcDst, int len, int32_t level) { return magnitude(pSrcDst, pSrcDst, len, level, threshold->magnitude32s.below); }

Status tevsThreshold_GTAbs_16s(const int16_t* pSrc, int16_t* pDst, int len, int16_t level) {
    return magnitude(pSrc, pDst, len, level, threshold->magnitude16s.above);
}
Status tevsThreshold_GTAbs_16s_I(int16_t* pSrcDst, int len, int16_t level) { return magnitude(pSrcDst, pSrcDst, len, level, threshold->magnitude16s.above); }
Status tevsThreshold_GTAbs_32f(const float* pSrc, float* pDst, int len, float level) {
    return magnitude(pSrc, pDst, len, level, threshold->magnitude32f.above);
}
Status tevsThreshold_GTAbs_32f_I(float* pSrcDst, int len, float level) { return magnitude(pSrcDst, pSrcDst, len, level, threshold->magnitude32f.above); }
Status tevsThreshold_GTAbs_64f(const double* pSrc, double* pDst, int len, double level) {
    return magnitude(pSrc, pDst, len, level, threshold->magnitude64f.above);
}
Status tevsThreshold_GTAbs_64f_I(double* pSrcDst, int len, double level) { return magnitude(pSrcDst, pSrcDst, len, level, threshold->magnitude64f.above); }
Status tevsThreshold_GTAbs_32s(const int32_t* pSrc, int32_t* pDst, int len, int32_t level) {
    return magnitude(pSrc, pDst, len, level, threshold->magnitude32s.above);
}
Status tevsThreshold_GTAbs_32s_I(int32_t* pSrcDst, int len, int32_t level) { return magnitude(pSrcDst, pSrcDst, len, level, threshold->magnitude32s.above); }

Status tevsThreshold_LTInv_32f(const float* pSrc, float* pDst, int len, float level) { return invert(pSrc, pDst, len, level, threshold->invert32f); }
Status tevsThreshold_LTInv_32f_I(float* pSrcDst, int len, float level) { return invert(pSrcDst, pSrcDst, len, level, threshold->invert32f); }
Status tevsThreshold_LTInv_32fc(const Complex32f* pSrc, Complex32f* pDst, int len, float level) {
    return invert(pSrc, pDst, len, level, threshold->invert32fc);
}
Status tevsThreshold_LTInv_32fc_I(Complex32f* pSrcDst, int len, float level) { return invert(pSrcDst, pSrcDst, len, level, threshold->invert32fc); }
Status tevsThreshold_LTInv_64f(const double* pSrc, double* pDst, int len, double level) { return invert(pSrc, pDst, len, level, threshold->invert64f); }
Status tevsThreshold_LTInv_64f_I(double* pSrcDst, int len, double level) { return invert(pSrcDst, pSrcDst, len, level, threshold->invert64f); }
Status tevsThreshold_LTInv_64fc(const Complex64f* pSrc, Complex64f* pDst, int len, double level) {
    return invert(pSrc, pDst, len, level, threshold->invert64fc);
}
Status tevsThreshold_LTInv_64fc_I(Complex64f* pSrcDst, int len, double level) { return invert(pSrcDst, pSrcDst, len, level, threshold->invert64fc); }
