// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// Project files. The input is a list of changes to a good file, as SQLite refuses nearly all files of random bytes at
// once: with an even first byte single bytes of the file (three bytes of place, one of value), with an odd one values
// of its tables. The file is refused with a message, or opens and can be saved and opened again.
#include "host/project_io/store/ProjectFile.h"
#include "tests/fuzz/FuzzSupport.h"
#include "tests/fuzz/TableEdits.h"
#include "tests/support/TestProject.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

using namespace OLMGis;
using ProjectIo::CProjectFile;

namespace {

/// A folder for the files of this process, removed at its end.
class CFuzzFolder {
public:
    CFuzzFolder() {
        std::string path = (std::filesystem::temp_directory_path() / "drenova-fuzz-XXXXXX").string();
        Require(::mkdtemp(path.data()) != nullptr, "no folder for the files");
        m_path = path;
    }
    ~CFuzzFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    CFuzzFolder(const CFuzzFolder&) = delete;
    CFuzzFolder& operator=(const CFuzzFolder&) = delete;

    std::string File(std::string_view name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

const CFuzzFolder& Folder() {
    static const CFuzzFolder folder;
    return folder;
}

std::string MakeGoodFile() {
    const CTestProject project;
    Fuzz::MakeProject();
    const std::string path = Folder().File("good.gpkg");
    Require(static_cast<bool>(CProjectFile::Create(path, true)), "no good file to begin with");
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void ChangeBytes(std::string& file, const std::uint8_t* data, std::size_t size) {
    for (; size >= 4; data += 4, size -= 4) {
        const std::size_t place = data[0] | std::size_t{data[1]} << 8U | std::size_t{data[2]} << 16U;
        file[place % file.size()] = static_cast<char>(data[3]);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string good = MakeGoodFile();
    if (size == 0)
        return 0;
    std::string bytes = good;
    if (data[0] % 2 == 0)
        ChangeBytes(bytes, data + 1, size - 1);
    else
        Fuzz::ChangeTables(bytes, data + 1, size - 1);
    const std::string path = Folder().File("fuzz.gpkg");
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;

    const CTestProject project;
    auto file = CProjectFile::Open(path);
    if (!file) {
        RequireTelling(file.GetError(), "fuzz.gpkg");
        return 0;
    }
    const std::string copy = Folder().File("copy.gpkg");
    const auto saved = file->SaveAs(copy, true);
    Require(static_cast<bool>(saved), saved ? "" : "an opened project cannot be saved: " + saved.GetError().message);
    const CTestProject other;
    const auto again = CProjectFile::Open(copy);
    Require(static_cast<bool>(again), again ? "" : "a saved project is refused: " + again.GetError().message);
    return 0;
}
