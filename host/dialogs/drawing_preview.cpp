// drawing_preview.cpp: the picture of a drawing file in a window: the lines of its model space as seen from
// above, with its blocks, texts as their boxes. Two walks over the objects, one for the extent and one to
// draw; nothing is kept.
#include <cmath>
#include <limits>

#include "host/core/document.h"
#include "host/core/trace.h"
#include "host/database/dxf.h"
#include "host/database/entities.h"
#include "host/database/geometry.h"
#include "host/database/shapes.h"
#include "host/dialogs/windows.h"
#include "host/files/paths.h"

namespace host::dialogs
{

namespace
{

constexpr COLORREF INK = 0x000000;
// Of a walk: blocks in blocks can be more than anybody can wait for, while other objects are as long as the
// file is.
constexpr long MOST_LINES_OF_BLOCKS = 1'000'000;
constexpr double ROUGH = 0.02; // of an arc's size, for the extent
constexpr double FINE = 0.4;   // pixels, for the picture
constexpr int LAYER_FROZEN = 1;

// The straight pieces of what is walked, as seen from above.
class line_sink : public db::shape_sink
{
public:
    long count() const { return count_; }
    void move(const db::vec& to) override { at_ = to; }
    void line(const db::vec& to) override
    {
        const db::vec from = std::exchange(at_, to);
        const bool is_sound =
            std::isfinite(from.x) && std::isfinite(from.y) && std::isfinite(to.x) && std::isfinite(to.y);
        count_++;
        if (is_sound)
            take(from, to);
    }
    void arc(const db::arc_piece& piece) override
    {
        const int chords = db::chord_count(piece, tolerance_of(piece));
        for (int i = 1; i <= chords; i++)
            line(piece.at(piece.start + (piece.end - piece.start) * i / chords));
    }

protected:
    virtual void take(const db::vec& from, const db::vec& to) = 0;
    virtual double tolerance_of(const db::arc_piece& piece) const = 0;

private:
    db::vec at_{};
    long count_ = 0;
};

class extent_sink : public line_sink
{
public:
    db::box extent = db::box::empty();

private:
    void take(const db::vec& from, const db::vec& to) override
    {
        extent.add(from.x, from.y, 0);
        extent.add(to.x, to.y, 0);
    }
    double tolerance_of(const db::arc_piece& piece) const override
    {
        return ROUGH * (std::hypot(piece.u.x, piece.u.y) + std::hypot(piece.v.x, piece.v.y));
    }
};

// From drawing units to pixels: the extent in the middle of the window.
struct fit {
    double scale = 0, x = 0, y = 0; // pixel = x + scale * u, y - scale * v

    fit(const db::box& extent, int width, int height)
    {
        const double w = extent.high[0] - extent.low[0], h = extent.high[1] - extent.low[1];
        const double none = std::numeric_limits<double>::infinity();
        scale = std::min(w > 0 ? (width - 1) / w : none, h > 0 ? (height - 1) / h : none);
        x = (width - 1) / 2.0 - scale * (extent.low[0] + w / 2);
        y = (height - 1) / 2.0 + scale * (extent.low[1] + h / 2);
    }
    bool is_sound() const { return std::isfinite(scale) && scale > 0 && std::isfinite(x) && std::isfinite(y); }
};

class drawing_sink : public line_sink
{
public:
    drawing_sink(surface& onto, const fit& where) : onto_(onto), fit_(where) {}

private:
    // What lies outside (endless lines) is cut off before it is drawn.
    void take(const db::vec& from, const db::vec& to) override
    {
        double x1 = fit_.x + fit_.scale * from.x, y1 = fit_.y - fit_.scale * from.y;
        double x2 = fit_.x + fit_.scale * to.x, y2 = fit_.y - fit_.scale * to.y;
        if (!cut(x1, y1, x2, y2))
            return;
        const int steps = static_cast<int>(std::ceil(std::max(std::abs(x2 - x1), std::abs(y2 - y1))));
        for (int i = 0; i <= steps; i++) {
            const double part = steps ? double(i) / steps : 0.0;
            onto_.put(static_cast<int>(std::lround(x1 + part * (x2 - x1))),
                      static_cast<int>(std::lround(y1 + part * (y2 - y1))), INK);
        }
    }
    double tolerance_of(const db::arc_piece&) const override { return FINE / fit_.scale; }

    // The part of a line inside the window (Liang and Barsky); false: none.
    bool cut(double& x1, double& y1, double& x2, double& y2) const
    {
        const double dx = x2 - x1, dy = y2 - y1;
        const double toward[] = {-dx, dx, -dy, dy};
        const double room[] = {x1, onto_.width() - 1 - x1, y1, onto_.height() - 1 - y1};
        double first = 0, last = 1;
        for (int side = 0; side < 4; side++) {
            if (toward[side] == 0) {
                if (room[side] < 0)
                    return false;
                continue;
            }
            const double at = room[side] / toward[side];
            if (toward[side] < 0)
                first = std::max(first, at);
            else
                last = std::min(last, at);
        }
        if (first > last)
            return false;
        const double x = x1, y = y1;
        x1 = x + first * dx, y1 = y + first * dy, x2 = x + last * dx, y2 = y + last * dy;
        return true;
    }

    surface& onto_;
    const fit fit_;
};

bool is_shown(const db::database& db, const db::object& entity)
{
    if (db::int_of(entity.groups, 60, 0) != 0)
        return false;
    const db::object_id layer = db.record("LAYER", db.text_of(entity.groups, 8));
    return !layer || (db::int_of(db.at(layer).groups, 62, 7) >= 0 &&
                      !(db::int_of(db.at(layer).groups, 70, 0) & LAYER_FROZEN));
}

// Lines without an end say nothing of the extent.
void walk(const db::database& db, line_sink& sink, bool with_endless)
{
    long of_blocks = 0;
    for (db::object_id id = db::first_entity(db, db.model_space()); id; id = db::next_entity(db, id)) {
        const bool has_block = db.is(id, "INSERT") || db.is(id, "DIMENSION");
        if ((!with_endless && db::is_endless(db, id)) || !is_shown(db, db.at(id)) ||
            (has_block && of_blocks >= MOST_LINES_OF_BLOCKS))
            continue;
        const long before = sink.count();
        db::trace_shape(db, id, sink);
        if (has_block)
            of_blocks += sink.count() - before;
    }
}

bool draw_file(const char* path, window& onto, const COLORREF* background)
{
    document apart(0); // what is read belongs to no open drawing
    db::dxf_error error;
    const std::unique_ptr<db::database> read = db::read_dxf(drawing_to_read(path), apart, &error);
    if (!read)
        return false;
    extent_sink measured;
    walk(*read, measured, false);
    if (measured.extent.is_empty())
        return false;
    const fit where(measured.extent, onto.width, onto.height);
    if (!where.is_sound())
        return false;
    if (background)
        onto.pixels.fill({0, 0, onto.width, onto.height}, *background);
    drawing_sink drawn(onto.pixels, where);
    walk(*read, drawn, true);
    return true;
}

} // namespace

} // namespace host::dialogs

extern "C" {

int acdbDisplayPreviewFromDwg(const char* path, HWND number, const COLORREF* background)
{
    host::trace_line line("acdbDisplayPreviewFromDwg");
    line.text(path).integer(number);
    host::dialogs::window* found = host::dialogs::find_window(number);
    const bool drawn = path && *path && found && host::dialogs::draw_file(path, *found, background);
    line.result(drawn ? "1" : "0");
    return drawn ? 1 : 0;
}
}
