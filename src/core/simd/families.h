// Every family that has kernels: its table's header, and its line in the list that dispatch.cpp walks.
#pragma once

#include "filter/fir.table.h"
#include "filter/multirate.table.h"
#include "transform/fft.table.h"
#include "vector/arithmetic.table.h"
#include "vector/conversion.table.h"
#include "vector/dotprod.table.h"
#include "vector/extremes.table.h"
#include "vector/elementary.table.h"
#include "vector/logic.table.h"
#include "vector/movement.table.h"
#include "vector/polar.table.h"
#include "vector/statistics.table.h"

#define TEVS_FAMILIES(X)             \
    X(LogicKernels, logic)           \
    X(MovementKernels, movement)     \
    X(ArithmeticKernels, arithmetic) \
    X(ConversionKernels, conversion) \
    X(PolarKernels, polar)           \
    X(ExtremesKernels, extremes)     \
    X(StatisticsKernels, statistics) \
    X(DotProdKernels, dotProd)       \
    X(ElementaryKernels, elementary) \
    X(FftKernels<float>, fft32)      \
    X(FftKernels<double>, fft64)     \
    X(FirKernels, fir)               \
    X(MultirateKernels, multirate)
