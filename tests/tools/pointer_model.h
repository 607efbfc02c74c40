// pointer_model.h: what a session of the pointer tool leaves behind, worked out on paper as it were: chains
// are plain lists of places, the pointer two neighbours in one. A session that comes to a
// segment without length, or to one that rounding alone has made, is told as `unclear`.
#pragma once

#include <string>
#include <vector>

struct model_place {
    double x = 0, y = 0, z = 0, bulge = 0;
};

struct model_object {
    std::string kind; // as objects_text names it; a LINE has two places
    std::vector<model_place> places;
    bool closed = false;
};

class pointer_model
{
public:
    // A run on `object`, picked at a part of the segment behind place `segment`. `others` were made before.
    pointer_model(model_object object, std::size_t segment, double part, std::vector<model_object> others);

    // One answer at the tool's prompt and those that it leads to. False when the tool has ended.
    bool answer(const std::vector<std::string>& lines);
    bool unclear() const { return unclear_; }
    std::string objects() const;
    const std::string& messages() const { return messages_; }
    const std::string& last_command() const { return last_command_; }

private:
    struct drawn {
        model_object object;
        bool erased = false;
    };

    void say(const char* text);
    void undo(std::string& text);
    void close_or_open(char key);
    void step_by(double distance);
    double step(double distance, double given);
    bool extend(const model_place& place, double given);
    void begin_chain(const model_place& place);
    void drop_stub(double old_length);
    void make_object();
    void take_place(std::size_t index);
    void next();
    void previous();
    void bearing(std::string text);
    void align(const std::string& target);
    bool run_to_edge(const std::string& edge);
    double total(const std::vector<std::string>& lines);
    bool run_key(const std::string& text, const std::vector<std::string>& lines);

    std::vector<drawn> drawing_;
    std::size_t worked_on_ = 0;
    std::vector<model_place> chain_;
    std::size_t cur_ = 0, other_ = 0;
    model_place tip_;
    bool draws_ = true, closed_ = false, unclear_ = false;
    std::string kind_, last_command_, messages_;
    double turn_ = 0, distance_ = 0, aux_ = 0;
};
