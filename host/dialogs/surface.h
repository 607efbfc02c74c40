// surface.h: a rectangle of pixels, for what programs draw on windows and for their bitmaps. Takes memory
// when the first pixel is drawn.
#pragma once

#include <algorithm>
#include <vector>

#include "hostapi/messages.h"

namespace host::dialogs
{

constexpr COLORREF NOT_DRAWN = 0xFFFFFFFFu;

class surface
{
public:
    surface() = default;
    surface(int width, int height) : width_(width), height_(height) {}

    int width() const { return width_; }
    int height() const { return height_; }
    bool holds(int x, int y) const { return x >= 0 && y >= 0 && x < width_ && y < height_; }
    COLORREF at(int x, int y) const
    {
        return holds(x, y) && !pixels_.empty() ? pixels_[place(x, y)] : NOT_DRAWN;
    }
    // False outside.
    bool put(int x, int y, COLORREF color)
    {
        if (!holds(x, y))
            return false;
        if (pixels_.empty())
            pixels_.assign(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), NOT_DRAWN);
        pixels_[place(x, y)] = color;
        return true;
    }
    void fill(const RECT& area, COLORREF color)
    {
        if (color == NOT_DRAWN && pixels_.empty())
            return;
        for (int y = std::max(area.top, 0); y < std::min(area.bottom, height_); y++)
            for (int x = std::max(area.left, 0); x < std::min(area.right, width_); x++)
                put(x, y, color);
    }
    void wipe() { pixels_ = {}; }

private:
    std::size_t place(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x);
    }
    int width_ = 0, height_ = 0;
    std::vector<COLORREF> pixels_;
};

} // namespace host::dialogs
