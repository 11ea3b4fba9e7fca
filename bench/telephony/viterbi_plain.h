#pragma once

#include <cstdint>

namespace plain {

void encode(const uint8_t* src, uint8_t* dst, int len, const int* poly, int numPoly, int constraintLen);

// Of frames that begin and end in state 0, as a textbook has it: a sum and a choice for every state, and one trace.
class Viterbi {
public:
    Viterbi(const int* poly, int numPoly, int constraintLen, int len);
    ~Viterbi();
    void decode(const int8_t* src, uint8_t* dst);

private:
    int numPoly_, states_, len_;
    uint8_t *symbols_, *odd_;
    int *now_, *next_;
};

}   // namespace plain
