#include "Tools/Import/Imdf/ZipWriter.hpp"

#include <sys/stat.h>
#include <zip.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace KorvaniTest {
namespace {

constexpr zip_uint32_t kLink = S_IFLNK | 0777U;

void require(bool done, const ZipEntry& entry) {
  if (!done) throw std::runtime_error("the zip entry " + entry.name + " cannot be written");
}

void addEntry(zip_t* archive, const ZipEntry& entry) {
  if (entry.name.back() == '/') {
    require(zip_dir_add(archive, entry.name.c_str(), ZIP_FL_ENC_UTF_8) >= 0, entry);
    return;
  }
  zip_source_t* source = zip_source_buffer(archive, entry.text.data(), entry.text.size(), 0);
  const zip_int64_t added = zip_file_add(archive, entry.name.c_str(), source, ZIP_FL_ENC_UTF_8);
  require(added >= 0, entry);
  const auto index = static_cast<zip_uint64_t>(added);
  if (entry.stored) zip_set_file_compression(archive, index, ZIP_CM_STORE, 0);
  if (entry.symbolicLink) {
    zip_file_set_external_attributes(archive, index, 0, ZIP_OPSYS_UNIX, kLink << 16U);
  }
  if (entry.password.empty()) return;
  const int done = zip_file_set_encryption(archive, index, ZIP_EM_AES_256, entry.password.c_str());
  require(done == 0, entry);
}

void putNumber(std::string& bytes, std::size_t at, std::uint32_t number) {
  for (std::size_t i = 0; i < 4; ++i) {
    bytes.at(at + i) = static_cast<char>((number >> (8 * i)) & 0xFFU);
  }
}

}  // namespace

void writeZip(const std::filesystem::path& path, const std::vector<ZipEntry>& entries) {
  zip_t* archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
  if (archive == nullptr) throw std::runtime_error("no zip file at " + path.string());
  for (const ZipEntry& entry : entries) addEntry(archive, entry);
  if (zip_close(archive) != 0) throw std::runtime_error(zip_error_strerror(zip_get_error(archive)));
}

void patchFile(const std::filesystem::path& path, const std::string& from, const std::string& to) {
  std::string bytes = bytesOf(path);
  std::size_t count = 0;
  for (std::size_t at = bytes.find(from); at != std::string::npos; at = bytes.find(from, at + 1)) {
    bytes.replace(at, from.size(), to);
    ++count;
  }
  if (count == 0 || from.size() != to.size()) throw std::runtime_error("nothing to patch");
  writeBytes(path, bytes);
}

void claimSizes(const std::filesystem::path& path, std::uint32_t size) {
  std::string bytes = bytesOf(path);
  const std::string local = "PK\3\4";
  const std::string central = "PK\1\2";
  for (std::size_t at = bytes.find(local); at != std::string::npos;
       at = bytes.find(local, at + 1)) {
    putNumber(bytes, at + 22, size);
  }
  for (std::size_t at = bytes.find(central); at != std::string::npos;
       at = bytes.find(central, at + 1)) {
    putNumber(bytes, at + 24, size);
  }
  writeBytes(path, bytes);
}

std::string bytesOf(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void writeBytes(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

}  // namespace KorvaniTest
