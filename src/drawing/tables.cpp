#include "drawing/tables.h"

#include <cstring>
#include <memory>
#include <string>

#include "common/names.h"
#include "common/text.h"
#include "drawing/open.h"
#include "hostapi/ads.h"

namespace
{

constexpr const char* CURRENT_STYLE = "CSTYLE";
constexpr int NEW_LAYER_COLOR = 7; // white, where a new layer is asked for "by layer"

void tell_failed_table()
{
    acedAlert("Failed");
}

std::string upper_case(const char* text)
{
    std::string upper(text);
    str_upper(upper.data());
    return upper;
}

// Opens a record of a table for write, and tells its id.
template <class Table, class Record>
Acad::ErrorStatus open_record(const Table& table, const char* name, AcDbObjectId& id, Record*& record)
{
    record = nullptr;
    const Acad::ErrorStatus found = table.getAt(name, id);
    return found == Acad::eOk ? object_open(record, id, AcDb::kForWrite) : found;
}

Acad::ErrorStatus free_layer(AcDbLayerTable& table, const char* name, AcDbObjectId& id)
{
    AcDbLayerTableRecord* record = nullptr;
    const Acad::ErrorStatus status = open_record(table, name, id, record);
    if (status != Acad::eOk)
        return status;
    record->setIsFrozen(false);
    record->setIsOff(false);
    record->setIsLocked(false);
    record->close();
    return Acad::eOk;
}

Acad::ErrorStatus add_layer(AcDbLayerTable& table, const char* name, int color, AcDbObjectId& id)
{
    auto record = std::make_unique<AcDbLayerTableRecord>();
    record->setName(name);
    record->setIsFrozen(false);
    record->setIsOff(false);
    record->setVPDFLT(false);
    record->setIsLocked(false);
    AcCmColor index;
    index.setColorIndex(static_cast<std::uint16_t>(color == COLOR_BY_LAYER ? NEW_LAYER_COLOR : color));
    record->setColor(index);
    AcDbObjectId continuous;
    const auto linetypes = opened_table<AcDbLinetypeTable>(AcDb::kForRead);
    if (!linetypes)
        tell_failed_table();
    else if (linetypes->getAt("CONTINUOUS", continuous) == Acad::eOk)
        record->setLinetypeObjectId(continuous);
    const Acad::ErrorStatus status = table.add(id, record.get());
    if (status == Acad::eOk)
        record.release()->close();
    return status;
}

Acad::ErrorStatus style_without_height(AcDbTextStyleTable& table, const char* name, AcDbObjectId& id)
{
    if (table.has(name)) {
        AcDbTextStyleTableRecord* there = nullptr;
        const Acad::ErrorStatus status = open_record(table, name, id, there);
        if (status == Acad::eOk) {
            there->setTextSize(0.0);
            there->close();
        }
        return status;
    }
    auto record = std::make_unique<AcDbTextStyleTableRecord>();
    record->setName(name);
    const Acad::ErrorStatus status = table.add(id, record.get());
    if (status != Acad::eOk)
        return status;
    record->setTextSize(0.0);
    record.release()->close();
    return Acad::eOk;
}

} // namespace

open_object<AcDbBlockTableRecord> opened_current_space()
{
    AcDbBlockTableRecord* space = nullptr;
    if (const auto blocks = opened_table<AcDbBlockTable>(AcDb::kForRead))
        if (blocks->getAt(current_space_name(), space, AcDb::kForWrite) != Acad::eOk)
            space = nullptr;
    return open_object<AcDbBlockTableRecord>(space);
}

Acad::ErrorStatus layer_make_current(char* name, int color)
{
    str_upper(name);
    str_trim(name);
    if (std::strcmp(name, CURRENT_LAYER) == 0 || name_clean(name) == 0)
        return Acad::eOk;
    AcDbObjectId id;
    {
        const auto table = opened_table<AcDbLayerTable>(AcDb::kForWrite);
        if (!table) {
            tell_failed_table();
            return Acad::eNotOpenForWrite;
        }
        const Acad::ErrorStatus status =
            table->has(name) ? free_layer(*table, name, id) : add_layer(*table, name, color, id);
        if (status != Acad::eOk)
            return status;
    }
    applyCurDwgLayerTableChanges();
    return acdbCurDwg()->setClayer(id);
}

Acad::ErrorStatus text_style_make_current(const char* name)
{
    std::string style = upper_case(name);
    if (style.empty() || style == CURRENT_STYLE) {
        resbuf value{};
        if (acedGetVar("TEXTSTYLE", &value) == RTNORM && value.restype == RTSTR) {
            style = value.resval.rstring;
            acad_free(value.resval.rstring);
        }
    }
    AcDbObjectId id;
    {
        const auto table = opened_table<AcDbTextStyleTable>(AcDb::kForWrite);
        if (!table) {
            tell_failed_table();
            return Acad::eNotOpenForWrite;
        }
        const Acad::ErrorStatus status = style_without_height(*table, style.c_str(), id);
        if (status != Acad::eOk)
            return status;
    }
    return acdbCurDwg()->setTextstyle(id);
}

Acad::ErrorStatus linetype_ensure(const char* name)
{
    const std::string linetype = upper_case(name);
    const auto table = opened_table<AcDbLinetypeTable>(AcDb::kForWrite);
    if (!table) {
        tell_failed_table();
        return Acad::eNotOpenForWrite;
    }
    if (table->has(linetype.c_str()))
        return Acad::eOk;
    auto record = std::make_unique<AcDbLinetypeTableRecord>();
    record->setComments("");
    record->setPatternLength(0.75);
    record->setNumDashes(2);
    record->setDashLengthAt(0, 0.5);
    record->setDashLengthAt(1, -0.25);
    record->setName(linetype.c_str());
    const Acad::ErrorStatus status = table->add(record.get());
    if (status == Acad::eOk)
        record.release()->close();
    return status;
}

const char* current_space_name()
{
    const AcDbDatabase* drawing = acdbCurDwg();
    if (!drawing || drawing->tilemode())
        return "*Model_Space";
    resbuf viewport{};
    const bool is_sheet = acedGetVar("CVPORT", &viewport) == RTNORM && viewport.resval.rint == 1;
    return is_sheet ? "*Paper_Space" : "*Model_Space";
}

void nodes_as_lines(const pg_node* nodes, pline_props props)
{
    if (!nodes || !nodes->next)
        return;
    const auto space = opened_current_space();
    if (!space) {
        tell_failed_table();
        return;
    }
    for (const pg_node* a = nodes; a->next; a = a->next) {
        const pg_node* b = a->next;
        auto line = std::make_unique<AcDbLine>(AcGePoint3d(a->x, a->y, a->z), AcGePoint3d(b->x, b->y, b->z));
        if (props.layer[0] != '\0')
            line->setLayer(props.layer);
        line->setColorIndex(static_cast<std::uint16_t>(props.color));
        line->setThickness(props.thickness);
        line->setLinetype(props.linetype);
        line->setLinetypeScale(props.ltscale);
        append_and_close(*space, std::move(line));
    }
}

void entity_extents(const ads_name name, ads_point low, ads_point high)
{
    const auto entity = opened<AcDbEntity>(name, AcDb::kForRead);
    AcDbExtents extents;
    if (!entity || entity->getGeomExtents(extents) != Acad::eOk)
        return;
    low[0] = extents.minPoint().x;
    low[1] = extents.minPoint().y;
    high[0] = extents.maxPoint().x;
    high[1] = extents.maxPoint().y;
}

void entity_layer(const ads_name name, text_out layer)
{
    text_set(layer, "");
    const auto entity = opened<AcDbEntity>(name, AcDb::kForRead);
    char* text = entity ? entity->layer() : nullptr;
    if (!text)
        return;
    text_set(layer, text);
    acad_free(text);
}

int entity_color(const ads_name name)
{
    char* layer = nullptr;
    {
        const auto entity = opened<AcDbEntity>(name, AcDb::kForRead);
        if (!entity)
            return COLOR_BY_LAYER;
        if (entity->colorIndex() != COLOR_BY_LAYER)
            return entity->colorIndex();
        layer = entity->layer();
    }
    int color = COLOR_BY_LAYER;
    const auto table = opened_table<AcDbLayerTable>(AcDb::kForRead);
    if (!table)
        tell_failed_table();
    AcDbLayerTableRecord* record = nullptr;
    if (table && layer && table->getAt(layer, record, AcDb::kForRead) == Acad::eOk && record) {
        color = record->color().colorIndex();
        record->close();
    }
    acad_free(layer);
    return color;
}

void nodes_grdraw(const pg_node* nodes, int color)
{
    for (const pg_node* a = nodes; a && a->next; a = a->next) {
        const ads_point from = {a->x, a->y, a->z}, to = {a->next->x, a->next->y, a->next->z};
        acedGrDraw(from, to, color, 0);
    }
    acedUpdateDisplay();
}
