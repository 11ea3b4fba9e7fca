// Every family that has kernels: its table's header, and its line in the list that dispatch.cpp walks.
#pragma once

#include "filter/fir.table.h"
#include "transform/fft.table.h"
#include "transform/spectrum.table.h"
#include "vector/conversion.table.h"
#include "vector/elementary.table.h"
#include "vector/logic.table.h"
#include "vector/movement.table.h"

#define TEVS_FAMILIES(X)             \
    X(LogicKernels, logic)           \
    X(MovementKernels, movement)     \
    X(ConversionKernels, conversion) \
    X(ElementaryKernels, elementary) \
    X(FftKernels, fft)               \
    X(SpectrumKernels, spectrum)     \
    X(FirKernels, fir)
