#include "import/reading/Archive.h"

#include "import/reading/UnreadableFile.h"

#include <algorithm>
#include <limits>

#include <unzip.h>

namespace importing {
namespace {

/// minizip's way to compare the names of parts without regard to letter case.
constexpr int anyCase = 2;

} // namespace

void Archive::Close::operator()(void* file) const noexcept { unzClose(file); }

Archive::Archive(const std::string& path, ArchiveBounds bounds) : file_(unzOpen64(path.c_str())), bounds_(bounds) {
    if (!file_) {
        throw UnreadableFile({message::notASpreadsheet, {path}});
    }
    unz_global_info64 info{};
    if (unzGetGlobalInfo64(file_.get(), &info) != UNZ_OK) {
        throw UnreadableFile({message::archiveBroken, {path}});
    }
    if (info.number_entry > bounds_.parts) {
        throw UnreadableFile({message::archiveTooLarge, {}});
    }
}

Archive::~Archive() = default;

bool Archive::Has(const std::string& part) const { return unzLocateFile(file_.get(), part.c_str(), anyCase) == UNZ_OK; }

void Archive::Open(const std::string& part) {
    if (!Has(part)) {
        throw UnreadableFile({message::partMissing, {part}});
    }
    if (unzOpenCurrentFile(file_.get()) != UNZ_OK) {
        throw UnreadableFile({message::partBroken, {part}});
    }
    part_ = part;
}

std::size_t Archive::Read(char* buffer, std::size_t size) {
    const auto wanted = static_cast<unsigned>(std::min<std::size_t>(size, std::numeric_limits<int>::max()));
    const int count = unzReadCurrentFile(file_.get(), buffer, wanted);
    if (count < 0) {
        throw UnreadableFile({message::partBroken, {part_}});
    }
    // At its end minizip compares the part's checksum.
    if (count == 0 && unzCloseCurrentFile(file_.get()) == UNZ_CRCERROR) {
        throw UnreadableFile({message::partBroken, {part_}});
    }
    unpacked_ += static_cast<std::uint64_t>(count);
    if (unpacked_ > bounds_.unpacked) {
        throw UnreadableFile({message::archiveTooLarge, {}});
    }
    return static_cast<std::size_t>(count);
}

} // namespace importing
