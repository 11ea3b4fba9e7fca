#include "picture.h"

#include <algorithm>
#include <cairo.h>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>

#include "output_file.h"

namespace {

constexpr double kInk = 0.25, kFaint = 0.88;
constexpr double kCurveColours[][3] = {{0.15, 0.39, 0.92}, {0.76, 0.25, 0.05}, {0.02, 0.59, 0.41}, {0.49, 0.23, 0.93}, {0.42, 0.45, 0.50}, {0.71, 0.33, 0.04}};

// From black over violet and orange to pale yellow, with a brightness that rises throughout, so that it reads in grey too.
void colour(double part, unsigned char* bgra) {
    static constexpr double kStops[][3] = {{0, 0, 4},     {40, 11, 84},   {101, 21, 110}, {159, 42, 99},
                                           {212, 72, 66}, {245, 125, 21}, {250, 193, 39}, {252, 255, 164}};
    constexpr int kLast = int(std::size(kStops)) - 1;
    const double at = std::clamp(part, 0.0, 1.0) * kLast;
    const int k = std::min(int(at), kLast - 1);
    for (int c = 0; c < 3; ++c) bgra[2 - c] = static_cast<unsigned char>(std::lround(kStops[k][c] + (at - k) * (kStops[k + 1][c] - kStops[k][c])));
    bgra[3] = 255;
}

// Round numbers, about `count` of them: 1, 2 or 5 times a power of ten apart.
double tickStep(double range, int count) {
    const double raw = range / std::max(count, 1), power = std::pow(10, std::floor(std::log10(raw)));
    for (double factor : {1.0, 2.0, 5.0})
        if (factor * power >= raw * 0.999) return factor * power;
    return 10 * power;
}

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;

Surface blank(int width, int height) {
    Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height), cairo_surface_destroy);
    if (const auto status = cairo_surface_status(surface.get())) throw Failure(std::string("cannot draw: ") + cairo_status_to_string(status));
    return surface;
}

class Canvas {
public:
    Canvas(const std::string& path, int width, int height, bool bar)
        : target_(path),
          surface_(blank(width, height)),
          cr_(cairo_create(surface_.get()), cairo_destroy),
          left(70),
          top(40),
          right(width - (bar ? 90 : 20)),
          bottom(height - 55) {
        if (cairo_status(cr_.get()) != CAIRO_STATUS_SUCCESS) throw Failure(std::string("cannot draw: ") + cairo_status_to_string(cairo_status(cr_.get())));
        cairo_set_source_rgb(cr(), 1, 1, 1);
        cairo_paint(cr());
        cairo_select_font_face(cr(), "sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(cr(), 12);
    }
    cairo_t* cr() { return cr_.get(); }
    void ink(double grey = kInk) { cairo_set_source_rgb(cr(), grey, grey, grey); }
    double x(const Axis& axis, double v) const { return left + (v - axis.from) / (axis.to - axis.from) * (right - left); }
    double y(const Axis& axis, double v) const { return bottom - (v - axis.from) / (axis.to - axis.from) * (bottom - top); }

    // Around a point of it: 0 its left or lower end, 0.5 the middle, 1 the other end.
    void text(double atX, double atY, const std::string& what, double alignX, double alignY) {
        cairo_text_extents_t size;
        cairo_text_extents(cr(), what.c_str(), &size);
        cairo_move_to(cr(), atX - alignX * size.x_advance, atY + alignY * 9);
        cairo_show_text(cr(), what.c_str());
    }
    void line(double x1, double y1, double x2, double y2) {
        cairo_move_to(cr(), x1, y1);
        cairo_line_to(cr(), x2, y2);
        cairo_stroke(cr());
    }
    void axes(const std::string& title, const Axis& xAxis, const Axis& yAxis, bool grid) {
        cairo_set_line_width(cr(), 1);
        char number[32];
        const double stepX = tickStep(xAxis.to - xAxis.from, int((right - left) / 90)), stepY = tickStep(yAxis.to - yAxis.from, int((bottom - top) / 45));
        for (double v = std::ceil(xAxis.from / stepX - 1e-9) * stepX; v <= xAxis.to + 1e-9 * stepX; v += stepX) {
            const double at = std::round(x(xAxis, v)) + 0.5;
            ink(grid ? kFaint : kInk);
            line(at, bottom, at, grid ? top : bottom + 4);
            ink();
            std::snprintf(number, sizeof number, "%.6g", std::abs(v) < 1e-9 * stepX ? 0 : v);
            text(at, bottom + 16, number, 0.5, 0.3);
        }
        for (double v = std::ceil(yAxis.from / stepY - 1e-9) * stepY; v <= yAxis.to + 1e-9 * stepY; v += stepY) {
            const double at = std::round(y(yAxis, v)) + 0.5;
            ink(grid ? kFaint : kInk);
            line(left, at, grid ? right : left - 4, at);
            ink();
            std::snprintf(number, sizeof number, "%.6g", std::abs(v) < 1e-9 * stepY ? 0 : v);
            text(left - 8, at, number, 1, 0.45);
        }
        ink();
        cairo_rectangle(cr(), left + 0.5, top + 0.5, right - left, bottom - top);
        cairo_stroke(cr());
        text((left + right) / 2, bottom + 40, xAxis.label, 0.5, 0.5);
        cairo_save(cr());
        cairo_translate(cr(), 16, (top + bottom) / 2);
        cairo_rotate(cr(), -M_PI / 2);
        text(0, 0, yAxis.label, 0.5, 0.5);
        cairo_restore(cr());
        cairo_set_font_size(cr(), 14);
        text(left, top - 16, title, 0, 0.5);
        cairo_set_font_size(cr(), 12);
    }
    void finish() {
        const auto write = [](void* to, const unsigned char* data, unsigned size) {
            try {
                static_cast<OutputFile*>(to)->write(data, size);
                return CAIRO_STATUS_SUCCESS;
            } catch (const Failure&) {
                return CAIRO_STATUS_WRITE_ERROR;
            }
        };
        if (const auto status = cairo_surface_write_to_png_stream(surface_.get(), write, &target_); status != CAIRO_STATUS_SUCCESS)
            throw Failure("cannot write " + target_.path() + ": " +
                          (status == CAIRO_STATUS_WRITE_ERROR ? std::strerror(errno) : cairo_status_to_string(status)));
        target_.commit();
    }

private:
    OutputFile target_;
    Surface surface_;
    std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cr_;

public:
    const double left, top, right, bottom;
};

// Pixels of their own, over the rectangle.
void paintRaster(Canvas& canvas, double left, double top, double right, double bottom, const std::function<double(double, double)>& part) {
    const int width = int(right - left), height = int(bottom - top);
    const Surface image = blank(width, height);
    cairo_surface_flush(image.get());
    for (int v = 0; v < height; ++v) {
        unsigned char* row = cairo_image_surface_get_data(image.get()) + ptrdiff_t(v) * cairo_image_surface_get_stride(image.get());
        for (int u = 0; u < width; ++u) colour(part((u + 0.5) / width, 1 - (v + 0.5) / height), row + 4 * ptrdiff_t(u));
    }
    cairo_surface_mark_dirty(image.get());
    cairo_set_source_surface(canvas.cr(), image.get(), left, top);
    cairo_paint(canvas.cr());
}

}   // namespace

void drawCurves(const std::string& path, int width, int height, const std::string& title, const Axis& x, const Axis& y, const std::vector<Curve>& curves) {
    Canvas canvas(path, width, height, false);
    canvas.axes(title, x, y, true);
    cairo_t* cr = canvas.cr();
    cairo_save(cr);
    cairo_rectangle(cr, canvas.left, canvas.top, canvas.right - canvas.left, canvas.bottom - canvas.top);
    cairo_clip(cr);
    for (size_t k = 0; k < curves.size(); ++k) {
        const auto& c = kCurveColours[k % std::size(kCurveColours)];
        cairo_set_source_rgb(cr, c[0], c[1], c[2]);
        cairo_set_line_width(cr, 1.2);
        // Of all points over one pixel, the least and the greatest are drawn: a peak of one bin stays.
        const auto& v = curves[k].y;
        const int pixels = int(canvas.right - canvas.left);
        for (int u = 0; u <= pixels; ++u) {
            const auto from = size_t(double(u) / (pixels + 1) * double(v.size())),
                       to = std::max(from + 1, size_t(double(u + 1) / (pixels + 1) * double(v.size())));
            const auto [least, most] = std::minmax_element(v.begin() + ptrdiff_t(from), v.begin() + ptrdiff_t(std::min(to, v.size())));
            cairo_line_to(cr, canvas.left + u, canvas.y(y, std::max(*least, y.from - 10)));
            if (most != least) cairo_line_to(cr, canvas.left + u, canvas.y(y, std::max(*most, y.from - 10)));
        }
        cairo_stroke(cr);
        if (curves.size() < 2) continue;
        cairo_move_to(cr, canvas.right - 12, canvas.top + 20 + 18 * double(k));
        canvas.text(canvas.right - 12, canvas.top + 18 + 18 * double(k), curves[k].name, 1, 0.5);
    }
    cairo_restore(cr);
    canvas.finish();
}

void drawRaster(const std::string& path, int width, int height, const std::string& title, const Axis& x, const Axis& y, const Axis& scale, int columns,
                int rows, const std::function<double(int, int)>& value) {
    Canvas canvas(path, width, height, true);
    const auto part = [&](double v) { return (v - scale.from) / (scale.to - scale.from); };
    // Of all that lies under one pixel, the largest is shown.
    const double pixelsX = std::floor(canvas.right - canvas.left), pixelsY = std::floor(canvas.bottom - canvas.top);
    paintRaster(canvas, canvas.left, canvas.top, canvas.right, canvas.bottom, [&](double u, double v) {
        const auto first = [](double at, int count) { return std::clamp(int(at * count), 0, count - 1); };
        const int c0 = first(u - 0.5 / pixelsX, columns), c1 = std::max(c0, first(u + 0.499 / pixelsX - 1e-9, columns));
        const int r0 = first(v - 0.5 / pixelsY, rows), r1 = std::max(r0, first(v + 0.499 / pixelsY - 1e-9, rows));
        double most = -HUGE_VAL;
        for (int c = c0; c <= std::max(c0, c1 - 1); ++c)
            for (int r = r0; r <= std::max(r0, r1 - 1); ++r) most = std::max(most, value(c, r));
        return part(most);
    });
    canvas.axes(title, x, y, false);
    const double barLeft = canvas.right + 18, barRight = barLeft + 14;
    paintRaster(canvas, barLeft, canvas.top, barRight, canvas.bottom, [](double, double v) { return v; });
    canvas.ink();
    const double step = tickStep(scale.to - scale.from, 8);
    for (double v = std::ceil(scale.from / step - 1e-9) * step; v <= scale.to + 1e-9; v += step) {
        char number[32];
        std::snprintf(number, sizeof number, "%g", std::abs(v) < 1e-9 ? 0 : v);
        canvas.text(barRight + 5, canvas.y(scale, v), number, 0, 0.45);
    }
    canvas.text(barLeft, canvas.top - 16, scale.label, 0, 0.5);
    canvas.finish();
}
