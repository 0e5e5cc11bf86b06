#pragma once

#include <algorithm>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "shell/text_session.h"
#include "tests/support/edit_run.h"
#include "tests/support/memory_files.h"
#include "tests/support/memory_values.h"

namespace merivane {

/// Answers as told and writes down what it was asked to do.
class FakeSessionHost : public virtual SessionHost {
 public:
  std::string name(int side) const override { return names[side]; }
  void setName(int side, const std::string& name) override { names[side] = name; }
  Answer ask(const Question& question) override {
    log += question.warning ? "warn" : "ask";
    log += question.cancel ? " or cancel: " : question.noByDefault ? ", rather no: " : ", rather yes: ";
    log += question.text + "\n";
    if (answers.empty()) return Answer::cancel;
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
  }
  void report(const std::string& message, ReportKind kind) override {
    log += (kind == ReportKind::error ? "error: " : "tell: ") + message + "\n";
  }
  void reportOutOfMemory() override { ++outOfMemory; }
  void showStatus(const std::string& text) override { log += "status: " + text + "\n"; }
  void startJob(TextId, Work work, WhenWorkEnds whenEnded, ProgressText) override {
    job = std::move(work);
    whenJobEnds = std::move(whenEnded);
  }
  std::string names[2];
  std::deque<Answer> answers;  // Cancel when there are no more
  Work job;
  WhenWorkEnds whenJobEnds;
  std::string log;
  int outOfMemory = 0;

  /// What was said since the last time.
  std::string said() { return std::exchange(log, {}); }

  /// Does the job that was started, and those that it leads to.
  void finish(WorkEnd end) {
    while (const Work work = std::exchange(job, nullptr)) {
      if (end != WorkEnd::outOfMemory) work({});
      std::exchange(whenJobEnds, nullptr)(end);
    }
  }
};

class FakeWindow final : public FakeSessionHost, public TextSessionHost {
 public:
  std::optional<std::string> chooseSaveFile(const std::string& title, const std::string& name) override {
    log += title + " from " + name + "\n";
    return chosen;
  }
  std::optional<ExportChoice> chooseExport(const ExportChoice& choice) override {
    log += "export from " + choice.path + "\n";
    if (!chosen) return std::nullopt;
    return ExportChoice{ExportScope::differences, *chosen};
  }

  std::optional<std::string> chosen;
};

/// Two files with a different second line, their names in the boxes of a window.
struct SessionRun {
  SessionRun() {
    files.files["C:\\l.txt"].contents = "a\nb\nc\n";
    files.files["C:\\r.txt"].contents = "a\r\nx\r\nc\r\n";
    window.names[0] = "C:\\l.txt";
    window.names[1] = "C:\\r.txt";
    for (const int side : {0, 1}) edits.view().file(side).path.clear();
  }

  std::string said() { return window.said(); }
  bool isComparing() const { return window.job != nullptr; }
  /// Compares, and returns what is said of it.
  std::string compare(WorkEnd end = WorkEnd::done) {
    session.compare();
    window.finish(end);
    return said();
  }
  /// Types a character at the start of a side.
  void type(int side) {
    edits.view().placeCaret(side, {});
    edits.press("!");
  }
  /// Does one thing after the other, and returns what is said of it: "compare", "save", "save-as",
  /// "save-all", "replace-left", "replace-right", "switch", "export", "offer" to save; "type-left" and
  /// "type-right"; and what EditRun::press() knows.
  std::string act(std::string_view steps, std::deque<Answer> answers = {}) {
    window.answers = std::move(answers);
    take(steps);
    return said();
  }
  void take(std::string_view steps) {
    constexpr std::pair<std::string_view, void (*)(SessionRun&)> known[] = {
        {"compare", [](SessionRun& r) { r.session.compare(), r.window.finish(WorkEnd::done); }},
        {"save", [](SessionRun& r) { r.session.save(); }},
        {"save-as", [](SessionRun& r) { r.session.saveAs(); }},
        {"save-all", [](SessionRun& r) { r.session.saveAll(); }},
        {"replace-left", [](SessionRun& r) { r.session.replace(0); }},
        {"replace-right", [](SessionRun& r) { r.session.replace(1); }},
        {"switch", [](SessionRun& r) { r.session.switchSides(); }},
        {"export", [](SessionRun& r) { r.session.exportResults(); }},
        {"offer", [](SessionRun& r) { r.session.offerToSave(); }},
        {"type-left", [](SessionRun& r) { r.type(0); }},
        {"type-right", [](SessionRun& r) { r.type(1); }}};
    for (size_t end; !steps.empty(); steps.remove_prefix(std::min(end, steps.size() - 1) + 1)) {
      end = steps.find(' ');
      const std::string_view step = steps.substr(0, end);
      const auto found = std::ranges::find(known, step, [](const auto& each) { return each.first; });
      found != std::end(known) ? found->second(*this) : edits.press(step);
    }
  }
  /// Both files, each with "*" after it where its side differs from it.
  std::string saved() { return left() + (isModified(0) ? "*|" : "|") + right() + (isModified(1) ? "*" : ""); }
  const std::string& contents(const std::string& path) { return files.files[path].contents; }
  const std::string& left() { return contents("C:\\l.txt"); }
  const std::string& right() { return contents("C:\\r.txt"); }
  const EditedFile& side(int side) { return edits.view().file(side); }
  bool isModified(int side) { return edits.history().isModified(side); }

  static std::string target(const std::string& path) { return path.ends_with(".lnk") ? "C:\\r.txt" : path; }
  static std::string time() { return "now"; }

  MemoryFiles files;
  Settings settings;
  MemoryValues values;
  SettingsStore store{values};
  FakeWindow window;
  EditRun edits{"", ""};
  TextSession session{window, {files, settings, store, target, time}, edits.view(), edits.history()};
};

}  // namespace merivane
