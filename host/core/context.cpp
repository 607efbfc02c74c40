#include "host/core/context.h"

namespace host
{

namespace
{

run_context now = run_context::application;

} // namespace

bool in_application_context()
{
    return now == run_context::application;
}

context_scope::context_scope(run_context context) : before_(now)
{
    now = context;
}

context_scope::~context_scope()
{
    now = before_;
}

} // namespace host
