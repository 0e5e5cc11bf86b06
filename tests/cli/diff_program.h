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

  DiffProgram() { errors_.text.reserve(4096); }

  /// Runs it and returns its exit status; output() and errors() are then what it wrote. The second half needs
  /// no memory of its own.
  int run(const std::vector<std::string_view>& arguments) {
    prepare();
    return runPrepared(arguments);
  }
  void prepare() {
    streams.files["in"].contents = input;
    streams.files["out"].contents.clear();
    streams.open("in", in_);
    streams.create("out", out_);
    errors_.text.clear();
  }
  int runPrepared(const std::vector<std::string_view>& arguments) {
    FileSystem& used = disk != nullptr ? *disk : files;
    return runDiff(arguments, {used, *in_, *out_, errors_, [this] { return terminal; }, columns, noColour,
                               [] { return std::string("now"); }, brokenPipe});
  }

  std::string output() const { return streams.files.at("out").contents; }
  const std::string& errors() const { return errors_.text; }

  MemoryFiles files, streams;
  FileSystem* disk = nullptr;  // in place of `files`
  std::string input;
  TerminalFacts terminal;
  const char* columns = nullptr;
  const char* noColour = nullptr;

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
