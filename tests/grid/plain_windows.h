// plain_windows.h: a grid in a temporary file once more, step by step as the windows are told, over a string of
// bytes. It asks nothing of src/grid but the record of a cell.
#pragma once

#include <cstring>
#include <string>
#include <vector>

#include "grid/grid.h"

class plain_windows
{
public:
    // The file, and what goes wrong with it.
    std::string bytes;
    bool exists = false;
    bool refuse_opening = false;
    std::size_t read_limit = static_cast<std::size_t>(-1);

    grid_cell read(int i)
    {
        if (read_count_ > 0 && i >= read_start_ && i < read_start_ + read_count_)
            return reads_[i - read_start_];
        if (write_count_ > 0 && i >= write_start_ && i < write_start_ + write_count_)
            return writes_[i - write_start_];
        if (!opens())
            return {};
        int s = i - 5000;
        if (s < 1)
            s = 0;
        read_count_ = from_file(s, 10000, reads_);
        read_start_ = s;
        overlay();
        if (i < read_start_ + read_count_)
            return reads_[i - read_start_];
        return {};
    }

    void write(int i, const grid_cell& cell)
    {
        if (read_count_ > 0 && i >= read_start_ && i < read_start_ + read_count_)
            reads_[i - read_start_] = cell;
        if (write_count_ > 0) {
            const int o = i - write_start_;
            if (o >= 0 && o < write_count_) {
                writes_[o] = cell;
                return;
            }
            if (o >= 0 && o < 5000) {
                for (; write_count_ < o; ++write_count_)
                    writes_[write_count_] = {};
                writes_[o] = cell;
                write_count_ = o + 1;
                return;
            }
            flush();
            if (write_count_ > 0)
                return; // the window is still full of what could not be brought away
        }
        write_start_ = i - 2500 < 0 ? 0 : i - 2500;
        if (read_count_ > 0 && read_start_ <= write_start_ &&
            write_start_ + 5000 <= read_start_ + read_count_) {
            for (int k = 0; k < 5000; ++k)
                writes_[k] = reads_[write_start_ - read_start_ + k];
            write_count_ = 5000;
        } else {
            write_count_ = opens() ? from_file(write_start_, 5000, writes_) : 0;
        }
        const int o = i - write_start_;
        for (; write_count_ < o + 1; ++write_count_)
            writes_[write_count_] = {};
        writes_[o] = cell;
    }

    void flush()
    {
        if (write_count_ <= 0 || refuse_opening)
            return;
        exists = true;
        const std::size_t place = 16 * static_cast<std::size_t>(write_start_);
        const std::size_t size = 16 * static_cast<std::size_t>(write_count_);
        if (bytes.size() < place + size)
            bytes.resize(place + size);
        std::memcpy(&bytes[place], writes_.data(), size);
        write_count_ = -1;
    }

    void vanish()
    {
        exists = false;
        bytes.clear();
    }

private:
    std::vector<grid_cell> writes_ = std::vector<grid_cell>(5000), reads_ = std::vector<grid_cell>(10000);
    int write_start_ = -1, write_count_ = -1, read_start_ = -1, read_count_ = -1;

    bool opens() const { return exists && !refuse_opening; }

    int from_file(int start, int most, std::vector<grid_cell>& into) const
    {
        const std::size_t place = 16 * static_cast<std::size_t>(start);
        std::size_t size = place < bytes.size() ? bytes.size() - place : 0;
        size = std::min({size, 16 * static_cast<std::size_t>(most), read_limit});
        std::memcpy(static_cast<void*>(into.data()), bytes.data() + place, size);
        return static_cast<int>(size / 16);
    }

    void overlay()
    {
        if (write_count_ <= 0)
            return;
        const int read_end = read_start_ + read_count_, write_end = write_start_ + write_count_;
        if (write_start_ >= read_start_ && write_start_ < read_end) {
            for (int i = write_start_; i < read_end && i < write_end; ++i)
                reads_[i - read_start_] = writes_[i - write_start_];
        } else if (read_start_ >= write_start_ && read_start_ < write_end && write_end < read_end) {
            for (int i = read_start_; i < write_end; ++i)
                reads_[i - read_start_] = writes_[i - write_start_];
        }
    }
};
