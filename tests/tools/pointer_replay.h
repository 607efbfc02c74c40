// pointer_replay.h: a session of the pointer tool done over again with plain lists of places, rule by rule
// and in the same arithmetic, so that it must come out as the tool's own to the last bit.
#pragma once

#include <string>
#include <vector>

struct replay_place {
    double x = 0, y = 0, z = 0, bulge = 0;
    bool operator==(const replay_place&) const = default;
};
using replay_chain = std::vector<replay_place>;

struct replay_object {
    std::string kind; // LINE, LW, P2D, P3D
    replay_chain places;
    bool closed = false;
    bool operator==(const replay_object&) const = default;
};

// What can happen in a step, counted for a look at what sessions come to.
enum replay_event {
    MOVED,
    SLID,
    BENT,
    NEW_CHAIN,
    DROPPED_OUT,    // the vertex that an end came back to
    NOTHING_BEYOND, // an end came back to the only other vertex
    HEAD_TIDIED,
    NOTHING_TO_DRAW, // a chain without length
    STUB_DROPPED,
    WITHOUT_LENGTH, // along a segment without length, eastward and level
    NOT_DRAWN,      // of a chain that isn't in the drawing: nothing is to be erased
    REPLAY_EVENTS
};

class pointer_replay
{
public:
    // `drawing` with the picked object last.
    pointer_replay(std::vector<replay_object> drawing, double pick_x, double pick_y, double arrow_size);

    // One answer at the tool's prompt and those that it leads to; false when the tool has ended.
    //   E, A: the second is "OBJECT X Y", an index of the drawing and the point of the pick; or none
    bool answer(const std::vector<std::string>& lines);

    std::vector<replay_object> objects() const;
    const std::vector<double>& arrows() const { return arrows_; } // x y z of three corners, for each prompt
    const std::vector<std::string>& told() const { return told_; }
    int count(int event) const { return events_[event]; }

private:
    struct drawn {
        replay_object object;
        bool erased;
    };
    struct pick;

    void draw_arrow();
    void say(std::string text) { told_.push_back(std::move(text)); }
    void mark_beginning();
    void leave_out(std::size_t index);
    void extend(const replay_place& n, double given);
    void begin_chain(const replay_place& n);
    double step(double dist, double given);
    void step_on(double dist) { rel_angle_ = step(dist, rel_angle_); }
    void close_or_open(bool close);
    void undo(std::string& text);
    void undo_turn(double back);
    void walk(bool forward);
    bool total(const std::vector<std::string>& lines);
    bool extend_to_edge(const std::string& edge);
    void align(const std::string& target);
    void turn_by_angle(const std::string& number);
    void bearing(std::string text);
    bool run_key(const std::vector<std::string>& lines, const std::string& text);
    void step_of_turn(double turn, const std::string& number);

    std::vector<drawn> drawing_;
    std::size_t ent_ = 0;
    bool ent_drawn_ = true;
    std::string kind_;
    bool closed_ = false;
    replay_chain chain_;
    std::size_t cur_ = 0, other_ = 0;
    replay_place tip_;
    bool draw_mode_ = true;
    std::string last_cmd_;
    double rel_angle_ = 0, dist_ = 0, aux_ = 0, arrow_size_;
    std::vector<double> arrows_;
    std::vector<std::string> told_;
    int events_[REPLAY_EVENTS] = {};
};
