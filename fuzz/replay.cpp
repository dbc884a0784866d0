// Runs a fuzz target once on each file that is named, or on each file of a folder, with any
// compiler: for sanitizers, valgrind, and a finding that is to be looked at.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void replay(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
  int count = 0;
  for (int i = 1; i < argc; ++i) {
    const std::filesystem::path path(argv[i]);
    if (!std::filesystem::exists(path)) {
      std::fprintf(stderr, "no such file or folder: %s\n", argv[i]);
      return 2;
    }
    if (!std::filesystem::is_directory(path)) {
      replay(path);
      ++count;
      continue;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
      if (!entry.is_regular_file()) continue;
      replay(entry.path());
      ++count;
    }
  }
  std::printf("%d inputs replayed\n", count);
  return count > 0 ? 0 : 2;
}
