// Filling the store: tables and records, blocks, entities in their spaces, objects.
//
// Owners are settled here and written into every object, so that afterwards 330 and the sequences say
// the same. Old files know neither; theirs come from where an object stands in the file.
#include <algorithm>
#include <utility>

#include "host/core/text.h"
#include "host/database/dxf_parts.h"
#include "host/database/dxf_upgrade.h"
#include "host/database/entities.h"

namespace host::db
{

namespace
{

class builder
{
public:
    builder(dxf_parts& parts, database& db, dxf_scanner& scanner)
        : parts_(parts), db_(db), scanner_(scanner), vertex_(db.intern("VERTEX")), attrib_(db.intern("ATTRIB")),
          seqend_(db.intern("SEQEND")), polyline_(db.intern("POLYLINE")), insert_(db.intern("INSERT"))
    {
    }
    bool build(std::vector<std::string>* remarks);

private:
    std::uint64_t free_handle(const dxf_object& from);
    void tables();
    bool blocks();
    bool block(dxf_block& from);
    object_id block_record(const dxf_object& begin, const std::string& name);
    void finish_records();
    object_id space_of(const group_list& groups);
    object_id space_by_handle(std::uint64_t handle);
    // Entities in sequence, each in the space or block that `owner_of` tells.
    template <class Owner>
    void entities(std::vector<dxf_object>& from, Owner owner_of);
    void close_sequence();
    bool continues_sequence(text_id type) const;
    object_id entity(dxf_object& from, object_id owner);
    void objects();
    struct tally {
        long count = 0, first = 0; // place of the first one
        void add(const dxf_object& from) { first = count++ ? first : from.place; }
    };
    void remark(std::vector<std::string>* remarks, const tally& of, const char* what) const;

    dxf_parts& parts_;
    database& db_;
    dxf_scanner& scanner_;
    const text_id vertex_, attrib_, seqend_, polyline_, insert_;
    object_id model_ = 0, paper_ = 0;
    object_id open_ = 0; // the POLYLINE or INSERT whose sequence is going on
    std::uint64_t last_space_handle_ = 0;
    object_id last_space_ = 0;
    tally double_handles_, incomplete_, double_blocks_;
    std::string incomplete_why_; // of the first one
};

// The object's handle if nobody has it yet, else (also when it has none) the next free one.
std::uint64_t builder::free_handle(const dxf_object& from)
{
    if (from.handle && !db_.by_handle(from.handle))
        return from.handle;
    if (from.handle)
        double_handles_.add(from);
    const std::uint64_t handle = db_.next_handle();
    db_.reserve_handle(handle);
    return handle;
}

void builder::tables()
{
    for (dxf_table& table : parts_.tables) {
        object_id id = db_.table(table.name);
        if (!id) {
            const std::uint64_t handle = free_handle(table.head);
            set_table_head(db_, table.head.groups, handle);
            upgrade_table_head(db_, table);
            id = db_.append(0, object_class::table, std::move(table.head.groups), handle);
        }
        const int handle_code = table.name == "DIMSTYLE" ? 105 : 5;
        const std::uint64_t owner = db_.at(id).handle;
        for (dxf_object& record : table.records) {
            const std::uint64_t handle = free_handle(record);
            set_head(db_, record.groups, head_order::owner_first, handle_code, handle, owner);
            upgrade_record(db_, table.name, record.groups);
            db_.append(id, object_class::record, std::move(record.groups), handle);
        }
    }
    if (!db_.table("BLOCK_RECORD")) {
        group_list groups{
            db_.text_group(0, "TABLE"), db_.text_group(2, "BLOCK_RECORD"),      handle_group(5, 0),
            handle_group(330, 0),       db_.text_group(100, "AcDbSymbolTable"), int_group(70, 0)};
        db_.append(0, object_class::table, std::move(groups));
    }
}

// By name, since that is what INSERT goes by; made when there is none.
object_id builder::block_record(const dxf_object& begin, const std::string& name)
{
    if (const object_id record = db_.record("BLOCK_RECORD", name))
        return record;
    if (const group* owner = find(begin.groups, 330)) {
        const object_id id = db_.by_handle(owner->handle);
        if (id && db_.is(id, "BLOCK_RECORD") && !db_.at(id).first &&
            same_text(db_.text_of(db_.at(id).groups, 2), name))
            return id;
    }
    return add_record(db_, "BLOCK_RECORD", name);
}

bool builder::block(dxf_block& from)
{
    group* given = find(from.begin.groups, 2);
    if (!given || given->kind != group_kind::text)
        return scanner_.fail(from.begin.place, "a block without a name");
    const std::string name = modern_block_name(db_.text(given->text));
    for (group& each : from.begin.groups)
        if ((each.code == 2 || each.code == 3) && each.kind == group_kind::text)
            each.text = db_.intern(modern_block_name(db_.text(each.text)));
    const object_id record = block_record(from.begin, name);
    if (db_.at(record).first) {
        double_blocks_.add(from.begin);
        return true;
    }
    for (dxf_object* end : {&from.begin, &from.end}) {
        const std::uint64_t handle = free_handle(*end);
        set_head(db_, end->groups, head_order::owner_first, 5, handle, db_.at(record).handle);
        upgrade_block_end(db_, end->groups);
        db_.append(record, object_class::entity, std::move(end->groups), handle);
    }
    entities(from.entities, [record](const group_list&) { return record; });
    return true;
}

bool builder::blocks()
{
    for (dxf_block& each : parts_.blocks)
        if (!block(each))
            return false;
    return true;
}

// Every record gets its BLOCK and ENDBLK, and there are the two spaces.
void builder::finish_records()
{
    for (const char* space : {"*Model_Space", "*Paper_Space"})
        if (!db_.record("BLOCK_RECORD", space))
            add_record(db_, "BLOCK_RECORD", space);
    const object_id table = db_.table("BLOCK_RECORD");
    for (object_id record = db_.at(table).first; record; record = db_.at(record).next) {
        if (db_.at(record).first)
            continue;
        const group* name = find(db_.at(record).groups, 2);
        const group named = text_group(2, name && name->kind == group_kind::text ? name->text : 0);
        for (const char* type : {"BLOCK", "ENDBLK"}) {
            group_list groups{db_.text_group(0, type), handle_group(330, 0), handle_group(5, 0)};
            if (db_.text(groups.front().text) == "BLOCK") {
                group path = named;
                path.code = 3;
                groups.insert(groups.end(), {db_.text_group(8, "0"), named, int_group(70, 0),
                                             point_group(10, 0, 0, 0), path, db_.text_group(1, "")});
            }
            upgrade_block_end(db_, groups);
            db_.append(record, object_class::entity, std::move(groups));
        }
    }
    model_ = db_.model_space();
    paper_ = db_.paper_space();
}

object_id builder::space_by_handle(std::uint64_t handle)
{
    if (handle == last_space_handle_)
        return last_space_;
    last_space_handle_ = handle;
    last_space_ = 0;
    const object_id id = db_.by_handle(handle);
    if (id && db_.is(id, "BLOCK_RECORD")) {
        const std::string name = upper(db_.text_of(db_.at(id).groups, 2));
        if (name.starts_with("*MODEL_SPACE") || name.starts_with("*PAPER_SPACE"))
            last_space_ = id;
    }
    return last_space_;
}

// The owner that the file names if it is a space, else by the mark of paper space (67).
object_id builder::space_of(const group_list& groups)
{
    bool in_braces = false;
    bool in_paper = false;
    int markers = 0;
    for (const group& each : groups) {
        if (each.code == 100 && ++markers == 2)
            break;
        if (each.code == 102)
            in_braces = !db_.text(each.text).starts_with('}');
        else if (each.code == 330 && !in_braces && !markers)
            if (const object_id space = space_by_handle(each.handle))
                return space;
        if (each.code == 67 && each.kind == group_kind::integer)
            in_paper = each.integer != 0;
    }
    return in_paper ? paper_ : model_;
}

bool builder::continues_sequence(text_id type) const
{
    if (!open_)
        return false;
    const text_id parent = db_.at(open_).type;
    return type == seqend_ || (type == vertex_ && parent == polyline_) ||
           (type == attrib_ && parent == insert_);
}

// A POLYLINE, or an INSERT with attributes, whose SEQEND is missing gets one: programs walk up to it.
void builder::close_sequence()
{
    if (open_ && (db_.at(open_).first || db_.at(open_).type == polyline_)) {
        const std::string layer(db_.text_of(db_.at(open_).groups, 8));
        group_list groups{db_.text_group(0, "SEQEND"), handle_group(330, 0), handle_group(5, 0),
                          db_.text_group(100, "AcDbEntity"), db_.text_group(8, layer.empty() ? "0" : layer)};
        db_.append(open_, object_class::entity, std::move(groups));
    }
    open_ = 0;
}

object_id builder::entity(dxf_object& from, object_id owner)
{
    const std::uint64_t handle = free_handle(from);
    const bool has_markers = find(from.groups, 100) != nullptr;
    set_head(db_, from.groups, head_order::owner_first, 5, handle, db_.at(owner).handle);
    std::string why;
    if (!has_markers && !upgrade_entity(db_, from.groups, &why)) {
        incomplete_.add(from);
        if (incomplete_.count == 1)
            incomplete_why_ = why;
    }
    return db_.append(owner, object_class::entity, std::move(from.groups), handle);
}

template <class Owner>
void builder::entities(std::vector<dxf_object>& from, Owner owner_of)
{
    for (dxf_object& each : from) {
        const text_id type = each.groups.front().text;
        if (continues_sequence(type)) {
            entity(each, open_);
            if (type == seqend_)
                open_ = 0;
            continue;
        }
        close_sequence();
        const object_id made = entity(each, owner_of(each.groups));
        if (type == polyline_ || type == insert_)
            open_ = made;
    }
    close_sequence();
}

void builder::objects()
{
    for (dxf_object& each : parts_.objects) {
        const std::uint64_t handle = free_handle(each);
        // The owner stays as the file has it; without one it is nobody.
        std::uint64_t owner = 0;
        bool in_braces = false;
        for (const group& at : each.groups) {
            if (at.code == 100)
                break;
            if (at.code == 102)
                in_braces = !db_.text(at.text).starts_with('}');
            if (at.code == 330 && !in_braces)
                owner = at.handle;
        }
        set_head(db_, each.groups, head_order::handle_first, 5, handle, owner);
        db_.append(0, object_class::object, std::move(each.groups), handle);
    }
}

void builder::remark(std::vector<std::string>* remarks, const tally& of, const char* what) const
{
    if (of.count)
        remarks->push_back(std::to_string(of.count) + what + ", the first at " +
                           (scanner_.is_binary() ? "byte " : "line ") + std::to_string(of.first));
}

bool builder::build(std::vector<std::string>* remarks)
{
    db_.reserve_handle(parts_.largest_handle);
    if (const group_list* seed = db_.header_value("$HANDSEED")) {
        constexpr std::uint64_t LARGEST = std::uint64_t{1} << 60;
        const group* value = find(*seed, 5);
        if (value && value->kind == group_kind::handle && value->handle > 1 && value->handle < LARGEST)
            db_.reserve_handle(value->handle - 1);
    }
    tables();
    if (!blocks())
        return false;
    finish_records();
    entities(parts_.entities, [this](const group_list& groups) { return space_of(groups); });
    objects();
    complete_drawing(db_);
    remark(remarks, double_handles_, " object(s) with the handle of another one got new handles");
    remark(remarks, double_blocks_, " block(s) left out because one of that name stands before");
    remark(remarks, incomplete_, (" old entities kept without markers (" + incomplete_why_ + ")").c_str());
    return true;
}

} // namespace

bool build_drawing(dxf_parts& parts, database& db, dxf_scanner& scanner, std::vector<std::string>* remarks)
{
    return builder(parts, db, scanner).build(remarks);
}

} // namespace host::db
