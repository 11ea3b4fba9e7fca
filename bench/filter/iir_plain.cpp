#include "filter/iir_plain.h"

namespace plain {
namespace {

template <class C> C operator+(C a, C b) { return {a.re + b.re, a.im + b.im}; }
template <class C> C operator-(C a, C b) { return {a.re - b.re, a.im - b.im}; }
template <class C> C operator*(C a, C b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }

template <class T> void sections(const T* x, T* y, int n, Section<T>* s, int count) {
    for (int k = 0; k < count; ++k, x = y) {
        const Section<T> c = s[k];
        T d0 = c.d0, d1 = c.d1;
        for (int i = 0; i < n; ++i) {
            const T v = x[i], w = c.b0 * v + d0;
            d0 = c.b1 * v + d1 - c.a1 * w;
            d1 = c.b2 * v - c.a2 * w;
            y[i] = w;
        }
        s[k].d0 = d0;
        s[k].d1 = d1;
    }
}

}   // namespace

void cascade(const float* x, float* y, int n, Section<float>* s, int count) { sections(x, y, n, s, count); }
void cascade(const double* x, double* y, int n, Section<double>* s, int count) { sections(x, y, n, s, count); }
void cascade(const Complex32f* x, Complex32f* y, int n, Section<Complex32f>* s, int count) { sections(x, y, n, s, count); }
void cascade(const Complex64f* x, Complex64f* y, int n, Section<Complex64f>* s, int count) { sections(x, y, n, s, count); }

}   // namespace plain
