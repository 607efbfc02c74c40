// context.h: whether what runs now works on one drawing or on the application as a whole.
#pragma once

namespace host
{

enum class run_context { application, document };

// Application context holds outside of every command and LISP call, and inside of session commands.
bool in_application_context();

// The context of what runs while this lives.
class context_scope
{
public:
    explicit context_scope(run_context context);
    ~context_scope();
    context_scope(const context_scope&) = delete;
    context_scope& operator=(const context_scope&) = delete;

private:
    run_context before_;
};

} // namespace host
