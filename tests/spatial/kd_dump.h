// kd_dump.h: trees as text, nodes with their planes and items in order, for comparison.
#pragma once

#include <cstdio>
#include <string>

#include "spatial/kd_node.h"
#include "tests/spatial/kd_plain.h"

inline std::string dump_plane(int dimension, double value)
{
    char text[60];
    std::snprintf(text, sizeof text, "(%d %a ", dimension, value + 0.0); // no zero below zero
    return text;
}

// `shift` is added to the items.
inline std::string dump(const kd_node* node, int shift = 0)
{
    if (!node->is_leaf)
        return dump_plane(node->split_dimension, node->split_value) + dump(node->low, shift) +
               dump(node->high, shift) + ")";
    std::string text = "[";
    for (int i = 0; i < node->item_count; ++i)
        text += std::to_string(node->items[i] + shift) + " ";
    return text + "]";
}

inline std::string dump(const plain_node& node)
{
    if (!node.is_leaf)
        return dump_plane(node.dimension, node.value) + dump(*node.low) + dump(*node.high) + ")";
    std::string text = "[";
    for (int i : node.items)
        text += std::to_string(i) + " ";
    return text + "]";
}
