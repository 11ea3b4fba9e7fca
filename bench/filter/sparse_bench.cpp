// Sparse filters, per sample: against a pass for each tap, and this library's dense filter of the same length.
#include <memory>

#include "filter/sparse_plain.h"
#include "support/bench.h"
#include "tevs.h"

namespace {

[[maybe_unused]] const bool registered = [] {
    struct Case {
        int taps, apart;
    };
    const std::vector<int64_t> sizes = {64, 480, 16384};
    for (const Case c : {Case{2, 100}, Case{8, 37}, Case{32, 150}, Case{256, 20}}) {
        const int order = (c.taps - 1) * c.apart;
        const auto name = "_32f_" + std::to_string(c.taps) + "_taps_order_" + std::to_string(order);
        const std::vector<float> taps(size_t(c.taps), 0.9f / float(c.taps));
        std::vector<int> delays;
        for (int k = 0; k < c.taps; ++k) delays.push_back(k * c.apart);
        bench::row("FIRSparse" + name, "tevs", sizes, [=](int n) {
            int size = 0;
            tevsFIRSparseGetStateSize_32f(c.taps, order, &size);
            return [=, block = std::make_shared<std::vector<uint8_t>>(size_t(size)), state = (FIRSparseState_32f*)nullptr,
                    x = std::vector<float>(size_t(n), 0.5f), y = std::vector<float>(size_t(n))]() mutable {
                if (!state) tevsFIRSparseInit_32f(&state, taps.data(), delays.data(), c.taps, nullptr, block->data());
                tevsFIRSparse_32f(x.data(), y.data(), n, state);
            };
        });
        bench::row("FIRSparse" + name, "plain", sizes, [=](int n) {
            return [=, x = std::vector<float>(size_t(n + order), 0.5f), y = std::vector<float>(size_t(n))]() mutable {
                plain::firSparse(&x[size_t(order)], taps.data(), delays.data(), c.taps, y.data(), n);
            };
        });
        bench::row("FIRSparse" + name, "dense", sizes, [=](int n) {
            std::vector<float> h(size_t(order) + 1);
            for (int k = 0; k < c.taps; ++k) h[size_t(delays[size_t(k)])] = taps[size_t(k)];
            FIRState_32f* p = nullptr;
            tevsFIRInitAlloc_32f(&p, h.data(), order + 1, nullptr);
            return [=, s = std::shared_ptr<FIRState_32f>(p, tevsFIRFree_32f), x = std::vector<float>(size_t(n), 0.5f),
                    y = std::vector<float>(size_t(n))]() mutable { tevsFIR_32f(x.data(), y.data(), n, s.get()); };
        });
        // Feedback of the same delays, from the second on, and with one sample more at the front.
        for (int least : {c.apart, 1}) {
            std::vector<int> all = {0};
            if (least == 1) all.push_back(1);
            all.insert(all.end(), delays.begin() + 1, delays.end());
            const int count = int(all.size()) - 1;
            const std::vector<float> both(size_t(count) + 1, 0.9f / float(count));
            const auto iirName = "IIRSparse" + name + (least == 1 ? "_and_1" : "");
            bench::row(iirName, "tevs", sizes, [=](int n) {
                int size = 0;
                tevsIIRSparseGetStateSize_32f(1, count, 0, order, &size);
                return [=, block = std::make_shared<std::vector<uint8_t>>(size_t(size)), state = (IIRSparseState_32f*)nullptr,
                        x = std::vector<float>(size_t(n), 0.5f), y = std::vector<float>(size_t(n))]() mutable {
                    if (!state) tevsIIRSparseInit_32f(&state, both.data(), all.data(), 1, count, nullptr, block->data());
                    tevsIIRSparse_32f(x.data(), y.data(), n, state);
                };
            });
            bench::row(iirName, "plain", sizes, [=](int n) {
                return [=, y = std::vector<float>(size_t(n + order))]() mutable {
                    for (int i = 0; i < n; ++i) y[size_t(order + i)] = 0.5f * both[0];
                    plain::iirSparse(&y[size_t(order)], &both[1], &all[1], count, n);
                };
            });
        }
    }
    return true;
}();

}   // namespace
