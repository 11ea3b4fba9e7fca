#pragma once

namespace plain {

struct Complex32f {
    float re, im;
};
struct Complex64f {
    double re, im;
};

// b0 b1 b2 a1 a2 and d0 d1 of each section.
template <class T> struct Section { T b0, b1, b2, a1, a2, d0, d1; };

// A cascade, section by section over the block, in the transposed direct form II.
void cascade(const float* x, float* y, int n, Section<float>* s, int sections);
void cascade(const double* x, double* y, int n, Section<double>* s, int sections);
void cascade(const Complex32f* x, Complex32f* y, int n, Section<Complex32f>* s, int sections);
void cascade(const Complex64f* x, Complex64f* y, int n, Section<Complex64f>* s, int sections);

}   // namespace plain
