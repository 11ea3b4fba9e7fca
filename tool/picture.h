#pragma once

#include <functional>
#include <string>
#include <vector>

// A PNG picture of one diagram with axes, drawn by cairo.
struct Axis {
    std::string label;
    double from, to;
};
struct Curve {
    std::string name;
    std::vector<double> y;   // evenly spaced over the x axis
};

void drawCurves(const std::string& path, int width, int height, const std::string& title, const Axis& x, const Axis& y, const std::vector<Curve>& curves);

// value(column, row) of a raster, row 0 at the bottom; `scale` is the range of the colours, and the label of their bar.
void drawRaster(const std::string& path, int width, int height, const std::string& title, const Axis& x, const Axis& y, const Axis& scale, int columns,
                int rows, const std::function<double(int, int)>& value);
