// temporary_directory.h: a directory of a test's own, gone with it, that is the current one meanwhile.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "host/core/session.h"

class temporary_directory
{
public:
    temporary_directory()
    {
        path = (std::filesystem::temp_directory_path() / "zent_test_XXXXXX").string();
        if (!mkdtemp(path.data()))
            std::abort();
        before_ = std::filesystem::current_path();
        settings_ = host::run_settings();
        std::filesystem::current_path(path);
    }
    ~temporary_directory()
    {
        host::run_settings() = settings_;
        std::filesystem::current_path(before_);
        std::filesystem::remove_all(path);
    }
    temporary_directory(const temporary_directory&) = delete;
    temporary_directory& operator=(const temporary_directory&) = delete;

    // The directories above are made.
    std::string write(const std::string& name, const std::string& bytes) const
    {
        const std::filesystem::path file = std::filesystem::path(path) / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
        return file.string();
    }
    std::string read(const std::string& name) const
    {
        std::ifstream in(std::filesystem::path(path) / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    bool has(const std::string& name) const
    {
        return std::filesystem::exists(std::filesystem::path(path) / name);
    }
    // Files in the directory itself, hidden ones too.
    int count() const
    {
        int files = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(path))
            files++;
        return files;
    }

    std::string path;

private:
    std::filesystem::path before_;
    host::settings settings_;
};
