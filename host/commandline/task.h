// task.h: a coroutine that gives one value. Commands are written as tasks so that their prompts can wait:
// for the user, or for what a program sends in its next call.
//
// A task starts when it is awaited (or resumed by start), and what it throws comes out where it is
// awaited. It belongs to whoever holds it; destroying it destroys what it awaits.
#pragma once

#include <coroutine>
#include <exception>
#include <optional>
#include <utility>

namespace host::commandline
{

template <class T>
class task;

namespace detail
{

struct promise_base {
    std::coroutine_handle<> next; // who awaits
    std::exception_ptr error;

    struct hand_over {
        bool await_ready() const noexcept { return false; }
        template <class Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> done) const noexcept
        {
            const std::coroutine_handle<> waiting = done.promise().next;
            return waiting ? waiting : std::noop_coroutine();
        }
        void await_resume() const noexcept {}
    };
    std::suspend_always initial_suspend() const noexcept { return {}; }
    hand_over final_suspend() const noexcept { return {}; }
    void unhandled_exception() { error = std::current_exception(); }
};

template <class T>
struct promise : promise_base {
    std::optional<T> value;
    task<T> get_return_object();
    void return_value(T given) { value = std::move(given); }
    T take()
    {
        if (error)
            std::rethrow_exception(error);
        return std::move(*value);
    }
};

template <>
struct promise<void> : promise_base {
    task<void> get_return_object();
    void return_void() const noexcept {}
    void take() const
    {
        if (error)
            std::rethrow_exception(error);
    }
};

} // namespace detail

template <class T = void>
class [[nodiscard]] task
{
public:
    using promise_type = detail::promise<T>;
    using handle = std::coroutine_handle<promise_type>;

    task() = default;
    explicit task(handle h) : handle_(h) {}
    task(task&& other) noexcept : handle_(std::exchange(other.handle_, {})) {}
    task& operator=(task&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~task()
    {
        if (handle_)
            handle_.destroy();
    }

    // For the outermost task: runs to its first wait; then done() and result().
    void start() { handle_.resume(); }
    bool done() const { return handle_.done(); }
    T result() { return handle_.promise().take(); }

    bool await_ready() const noexcept { return false; }
    std::coroutine_handle<> await_suspend(std::coroutine_handle<> waiting) noexcept
    {
        handle_.promise().next = waiting;
        return handle_;
    }
    T await_resume() { return handle_.promise().take(); }

private:
    handle handle_;
};

template <class T>
task<T> detail::promise<T>::get_return_object()
{
    return task<T>(std::coroutine_handle<promise<T>>::from_promise(*this));
}
inline task<void> detail::promise<void>::get_return_object()
{
    return task<void>(std::coroutine_handle<promise<void>>::from_promise(*this));
}

} // namespace host::commandline
