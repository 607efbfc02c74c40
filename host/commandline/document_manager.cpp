// document_manager.cpp: the document manager that modules ask for by acDocManagerPtr.
#include <utility>

#include "host/commandline/open_drawings.h"
#include "host/core/console.h"
#include "host/core/context.h"
#include "host/core/document.h"
#include "host/core/reactors.h"
#include "host/core/trace.h"
#include "host/files/paths.h"
#include "hostapi/dbobjects.h"

namespace host::commandline
{

namespace
{

// Walks the drawings that were open when it was made; those closed since are passed over.
class document_walk final : public AcApDocumentIterator
{
public:
    bool done() const override
    {
        for (std::size_t i = at_; i < numbers_.size(); ++i)
            if (document_of_number(numbers_[i]))
                return false;
        return true;
    }
    void step() override
    {
        if (at_ < numbers_.size())
            ++at_;
        while (at_ < numbers_.size() && !document_of_number(numbers_[at_]))
            ++at_;
    }
    AcApDocument* document() const override
    {
        host::document* doc = at_ < numbers_.size() ? document_of_number(numbers_[at_]) : nullptr;
        return doc ? module_view(*doc) : nullptr;
    }

private:
    const std::vector<int> numbers_ = document_numbers();
    std::size_t at_ = 0;
};

class document_manager final : public AcApDocManager
{
public:
    void addReactor(AcApDocManagerReactor* reactor) override { add_document_reactor(reactor); }
    void removeReactor(AcApDocManagerReactor* reactor) override { remove_document_reactor(reactor); }
    AcApDocument* curDocument() const override
    {
        return has_document() ? module_view(current_document()) : nullptr;
    }
    bool isApplicationContext() const override { return in_application_context(); }

    int appContextOpenDocument(const char* file) override
    {
        trace_line line("appContextOpenDocument");
        line.text(file);
        const int status = open(file);
        line.result(std::to_string(status));
        return status;
    }
    void executeInApplicationContext(void (*step)(void*), void* data) override
    {
        const context_scope application(run_context::application);
        if (step)
            step(data);
    }
    int closeDocument(AcApDocument* view) override
    {
        trace_line line("closeDocument");
        const int status = close(line, document_of(view));
        line.result(std::to_string(status));
        return status;
    }
    AcApDocumentIterator* newAcApDocumentIterator() override { return new document_walk; }

private:
    static int open(const char* file)
    {
        if (!in_application_context())
            return Acad::eNotApplicable;
        if (!file || !*file)
            return Acad::eInvalidInput;
        std::string error;
        if (open_in_front(file, &error))
            return Acad::eOk;
        history_line(error);
        return Acad::eFileAccessErr;
    }
    static int close(trace_line& line, document* doc)
    {
        if (!doc)
            return Acad::eInvalidInput;
        line.text(std::string_view(file_name_of(shown_name(*doc))));
        if (is_closing(*doc)) // asked already
            return Acad::eOk;
        if (!may_close(*doc))
            return Acad::eNotApplicable;
        close_when_idle(*doc);
        return Acad::eOk;
    }
};

document_manager the_manager;

} // namespace

} // namespace host::commandline

AcApDocManager* acDocManagerPtr()
{
    return &host::commandline::the_manager;
}
