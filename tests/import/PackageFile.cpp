#include "tests/import/PackageFile.h"

#include <array>
#include <cstdlib>
#include <stdexcept>

#include <unzip.h>
#include <zip.h>

namespace test {

PackageFile PackageFile::OfSheet(const std::string& sheet, const std::string& strings, const std::string& styles) {
    const std::string main = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
    const std::string types = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    const std::string package = "http://schemas.openxmlformats.org/package/2006/relationships";
    PackageFile file;
    file.Set("_rels/.rels", "<Relationships xmlns='" + package + "'><Relationship Id='rId1' Type='" + types +
                                "/officeDocument' Target='xl/workbook.xml'/></Relationships>");
    file.Set("xl/workbook.xml", "<workbook xmlns='" + main + "' xmlns:r='" + types +
                                    "'><sheets><sheet name='Sheet1' sheetId='1' r:id='rId1'/></sheets></workbook>");
    file.Set("xl/_rels/workbook.xml.rels",
             "<Relationships xmlns='" + package + "'><Relationship Id='rId1' Type='" + types +
                 "/worksheet' Target='worksheets/sheet1.xml'/><Relationship Id='rId2' Type='" + types +
                 "/sharedStrings' Target='sharedStrings.xml'/><Relationship Id='rId3' Type='" + types +
                 "/styles' Target='/xl/styles.xml'/></Relationships>");
    file.Set("xl/worksheets/sheet1.xml", "<worksheet xmlns='" + main + "'>" + sheet + "</worksheet>");
    file.Set("xl/sharedStrings.xml", "<sst xmlns='" + main + "'>" + strings + "</sst>");
    file.Set("xl/styles.xml", "<styleSheet xmlns='" + main + "'>" + styles + "</styleSheet>");
    return file;
}

PackageFile PackageFile::Read(const std::filesystem::path& path) {
    PackageFile package;
    const unzFile file = unzOpen64(path.c_str());
    if (file == nullptr) {
        throw std::runtime_error("cannot read " + path.string());
    }
    for (int status = unzGoToFirstFile(file); status == UNZ_OK; status = unzGoToNextFile(file)) {
        std::array<char, 256> name{};
        unz_file_info64 info{};
        unzGetCurrentFileInfo64(file, &info, name.data(), name.size(), nullptr, 0, nullptr, 0);
        std::string content(info.uncompressed_size, '\0');
        unzOpenCurrentFile(file);
        unzReadCurrentFile(file, content.data(), static_cast<unsigned>(content.size()));
        unzCloseCurrentFile(file);
        package.parts_[name.data()] = std::move(content);
    }
    unzClose(file);
    return package;
}

void PackageFile::Write(const std::filesystem::path& path) const {
    zipFile file = zipOpen64(path.c_str(), APPEND_STATUS_CREATE);
    if (file == nullptr) {
        throw std::runtime_error("cannot write " + path.string());
    }
    for (const auto& [name, content] : parts_) {
        const zip_fileinfo info{};
        zipOpenNewFileInZip64(file, name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED, 6, 1);
        zipWriteInFileInZip(file, content.data(), static_cast<unsigned>(content.size()));
        zipCloseFileInZip(file);
    }
    zipClose(file, nullptr);
}

TestFolder::TestFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "kovra-import-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("cannot make a folder");
    }
    path_ = name;
}

TestFolder::~TestFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

} // namespace test
