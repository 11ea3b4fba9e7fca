// Every family that has kernels: its table's header, and its line in the list that dispatch.cpp walks.
#pragma once

#include "transform/fft.table.h"
#include "transform/spectrum.table.h"
#include "vector/conversion.table.h"
#include "vector/logic.table.h"
#include "vector/movement.table.h"

#define TEVS_FAMILIES(X) X(ConversionKernels, conversion) X(LogicKernels, logic) X(MovementKernels, movement) X(FftKernels, fft) X(SpectrumKernels, spectrum)
