#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/run_diff.h"
#include "tests/support/memory_files.h"

namespace merivane {

/// merivane-diff without a process: files, streams and terminal are in memory.
class DiffProgram {
 public:
  static constexpr SystemError brokenPipe = 32;
  static constexpr const char* standardOutput = "<standard output>";

  DiffProgram() { errors_.text.reserve(4096); }

  /// Runs it and answers its exit status; `output` and `errors` are then what it wrote. `access` is what it
  /// gets for a file system.
  int run(const std::vector<std::string_view>& arguments) { return run(arguments, files); }
  int run(const std::vector<std::string_view>& arguments, FileSystem& access) {
    prepare();
    return runPrepared(arguments, access);
  }

  /// The two halves of run(), the second of which needs no memory of its own.
  void prepare() {
    files.files.erase(standardOutput);
    files.files["<standard input>"].contents = input;
    files.open("<standard input>", in_);
    files.create(standardOutput, out_);
    errors_.text.clear();
  }
  int runPrepared(const std::vector<std::string_view>& arguments, FileSystem& access) {
    return runDiff(arguments,
                   {access, *in_, full != nullptr ? *full : *out_, errors_, [this] { return terminal; },
                    columns, noColour, [] { return std::string("now"); }, brokenPipe});
  }

  std::string output() const {
    const auto found = files.files.find(standardOutput);
    return found == files.files.end() ? std::string() : found->second.contents;
  }
  const std::string& errors() const { return errors_.text; }

  MemoryFiles files;
  std::string input;
  TerminalFacts terminal;
  const char* columns = nullptr;
  const char* noColour = nullptr;
  OutputFile* full = nullptr;  // takes the place of standard output

 private:
  /// Needs no memory, so that it can be written to when there is none.
  struct Errors final : ByteSink {
    void write(std::string_view bytes) override {
      text.append(bytes.substr(0, text.capacity() - text.size()));
    }
    std::string text;
  };
  Errors errors_;
  std::unique_ptr<InputFile> in_;
  std::unique_ptr<OutputFile> out_;
};

}  // namespace merivane
