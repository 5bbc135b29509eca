#include "hash_file.h"

#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <map>

namespace corpus {
namespace {

constexpr int kShown = 20;

/// Hash texts by name. Lines of an empty or unreadable file make an empty map, which never passes a check.
std::map<std::string, std::string> readHashes(const char *fileName) {
  std::map<std::string, std::string> hashes;
  std::ifstream file(fileName);
  for (std::string line; std::getline(file, line);) {
    if (!line.empty() && line.back() == '\r') {
      line.pop_back();
    }
    const std::size_t space = line.find(' ');
    if (line.empty() || line.front() == '#' || space == std::string::npos) {
      continue;
    }
    hashes[line.substr(space + 1)] = line.substr(0, space);
  }
  return hashes;
}

/// Prints the first few differences and their number.
class Report {
public:
  void add(const std::string &text) {
    if (++count_ <= kShown) {
      std::printf("%s\n", text.c_str());
    }
  }
  [[nodiscard]] int count() const { return count_; }

private:
  int count_ = 0;
};

} // namespace

std::string lineOf(const Entry &entry) {
  char hash[24];
  std::snprintf(hash, sizeof hash, "%016" PRIx64 " ", entry.hash);
  return hash + entry.name;
}

int check(const std::vector<Entry> &entries, const char *fileName) {
  std::map<std::string, std::string> expected = readHashes(fileName);
  if (expected.empty()) {
    std::printf("%s holds no hashes\n", fileName);
    return 2;
  }
  Report report;
  for (const Entry &entry : entries) {
    const std::string hash = lineOf(entry).substr(0, 16);
    const auto found = expected.find(entry.name);
    if (found == expected.end()) {
      report.add("not in the file: " + entry.name);
      continue;
    }
    if (found->second != hash) {
      report.add("differs: " + entry.name + " is " + hash + ", not " + found->second);
    }
    expected.erase(found);
  }
  for (const auto &[name, hash] : expected) {
    report.add("no longer accepted: " + name);
  }
  std::printf("%zu combinations, %d differences\n", entries.size(), report.count());
  return report.count() == 0 ? 0 : 1;
}

int write(const std::vector<Entry> &entries, const char *fileName) {
  std::ofstream file(fileName, std::ios::binary);
  file << "# FNV-1a of output bytes and codes; " << kNamesAre << '\n';
  for (const Entry &entry : entries) {
    file << lineOf(entry) << '\n';
  }
  file.close();
  return file.good() ? 0 : 2;
}

} // namespace corpus
