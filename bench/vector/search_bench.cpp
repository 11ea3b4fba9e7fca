// Sorting and searching against the C++ library, Highway's sort and plain loops.
#include <algorithm>
#include <memory>
#include <random>
#if TEVS_PEER_HIGHWAY
#include <hwy/contrib/sort/vqsort.h>
#endif

#include "support/bench.h"
#include "tevs.h"
#include "vector/search_plain.h"

namespace {

template <class T> std::vector<T> samples(size_t n) {
    std::mt19937_64 g(n);
    std::vector<T> v(n);
    for (T& x : v)
        if constexpr (std::is_integral_v<T>)
            x = T(g());
        else
            x = T(std::normal_distribution<double>()(g));
    return v;
}
const std::vector<int64_t> kLengths = {16, 163, 1024, 10000, 100000, 1000000};

// f(samples, copy of them, indices, n), of other samples at every call: a branch that has seen them before is a branch foretold.
template <class T, class F> void row(const std::string& operation, const char* who, F f) {
    bench::row(operation, who, kLengths, [=](int n) {
        const int apart = n < 10000 ? 100000 : n / 4;
        return [=, pool = samples<T>(size_t(n + apart)), copy = std::vector<T>(size_t(n)), indx = std::vector<int>(size_t(n)), at = 0]() mutable {
            at = (at + n) % apart;
            f(pool.data() + at, copy.data(), indx.data(), n);
        };
    });
}
template <class T> void copied(const T* s, T* d, int n) { std::copy_n(s, n, d); }

template <class T> void sorting(const std::string& type, Status (*sort)(T*, int), Status (*down)(T*, int), Status (*indices)(const T*, int*, int)) {
    row<T>("Sort_" + type + "_I", "tevs", [=](const T* s, T* d, int*, int n) { copied(s, d, n), sort(d, n); });
    row<T>("Sort_" + type + "_I", "std::sort", [](const T* s, T* d, int*, int n) { copied(s, d, n), plain::sort(d, n); });
    row<T>("SortDown_" + type + "_I", "tevs", [=](const T* s, T* d, int*, int n) { copied(s, d, n), down(d, n); });
    row<T>("SortIndx_" + type, "tevs", [=](const T* s, T*, int* i, int n) { indices(s, i, n); });
    row<T>("SortIndx_" + type, "stable_sort", [](const T* s, T*, int* i, int n) { plain::sortIndx(s, i, n); });
#if TEVS_PEER_HIGHWAY
    row<T>("Sort_" + type + "_I", "Highway", [sorter = std::make_shared<hwy::Sorter>()](const T* s, T* d, int*, int n) {
        copied(s, d, n);
        (*sorter)(d, size_t(n), hwy::SortAscending());
    });
#endif
}

template <class T> void nearest(const std::string& type, Status (*f)(const T*, int*, int, const T*, int)) {
    for (const int entries : {16, 256, 4096}) {
        const std::string operation = "Nearest_" + type + "_" + std::to_string(entries);
        const auto add = [&](const char* who, auto search) {
            bench::row(operation, who, {16, 163, 1024, 16384}, [=](int n) {
                auto table = samples<T>(size_t(entries));
                std::sort(table.begin(), table.end());
                return [=, pool = samples<T>(size_t(n) + 100000), indx = std::vector<int>(size_t(n)), at = 0]() mutable {
                    at = (at + n) % 100000;
                    search(pool.data() + at, indx.data(), n, table.data(), entries);
                };
            });
        };
        add("tevs", f);
        add("lower_bound", plain::nearest<T>);
    }
}
void nearestVec() {
    for (const int dim : {2, 10, 16, 64, 256})
        for (const int len : {1, 256}) {
            const std::string operation = "NearestVec_32f_" + std::to_string(dim) + "_" + std::to_string(len);
            const auto add = [&](const char* who, auto search) {
                // An element is a difference, squared and added.
                bench::row(operation, who, {int64_t{256} * dim * len}, [=](int) {
                    return [=, src = samples<float>(size_t(len * dim)), book = samples<float>(size_t(256 * dim)), indx = std::vector<int>(size_t(len)),
                            dist = std::vector<float>(size_t(len))]() mutable { search(src.data(), indx.data(), dist.data(), len, book.data(), 256, dim); };
                });
            };
            add("tevs", tevsNearestVec_32f);
            add("plain", plain::nearestVec);
        }
}

const bool registered = [] {
    sorting<int16_t>("16s", tevsSort_16s_I, tevsSortDown_16s_I, tevsSortIndx_16s);
    sorting<int32_t>("32s", tevsSort_32s_I, tevsSortDown_32s_I, tevsSortIndx_32s);
    sorting<float>("32f", tevsSort_32f_I, tevsSortDown_32f_I, tevsSortIndx_32f);
    sorting<double>("64f", tevsSort_64f_I, tevsSortDown_64f_I, tevsSortIndx_64f);
    nearest<int16_t>("16s", tevsNearest_16s);
    nearest<int32_t>("32s", tevsNearest_32s);
    nearest<float>("32f", tevsNearest_32f);
    nearest<double>("64f", tevsNearest_64f);
    nearestVec();
    return true;
}();

}   // namespace
