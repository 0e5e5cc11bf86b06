#include "operations/journal.h"

#include <algorithm>
#include <utility>

#include "base/names.h"
#include "base/paths.h"
#include "base/temp_files.h"
#include "operations/tree_size.h"

namespace merivane {
namespace {

// The file is lines of fields with tabs between; neither is in any name that an operation takes. It is only
// ever added to, so that a line without its end is the only one that may be wrong. Of several operations the
// last counts:
//
//   merivane-journal 1
//   do    WORDS                                 what is going to be done,
//   step  KIND  PATH  TARGET  BACKUP  TITLE     in these steps;
//   run                                         that is all of them.
//   at    INDEX                                 the step that is begun now, or taken back
//   done
constexpr std::string_view kFirstLine = "merivane-journal 1\n";
constexpr char kPrefix[] = "cmp-";

std::string fileIn(const std::string& folder) { return joinPath(folder, nameOf(folder)); }

void addLine(std::string& text, std::initializer_list<std::string> fields) {
  for (const std::string& field : fields) {
    for (const char c : field) text += c == '\t' || c == '\n' ? ' ' : c;
    text += '\t';
  }
  text.back() = '\n';
}

std::vector<std::string> fieldsOf(std::string_view line) {
  std::vector<std::string> fields(1);
  for (const char c : line) {
    if (c == '\t') {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  return fields;
}

std::optional<uint32_t> numberOf(const std::string& digits) {
  if (digits.empty() || digits.size() > 9) return std::nullopt;
  uint32_t number = 0;
  for (const char c : digits) {
    if (c < '0' || c > '9') return std::nullopt;
    number = number * 10 + static_cast<uint32_t>(c - '0');
  }
  return number;
}

/// What is under way, by a journal's file.
class JournalText {
 public:
  /// False for a text that is no journal of ours.
  bool read(std::string_view text, InterruptedOperation& operation) {
    if (!text.starts_with(kFirstLine)) return false;
    for (text.remove_prefix(kFirstLine.size());; text.remove_prefix(text.find('\n') + 1)) {
      const size_t end = text.find('\n');
      if (end == std::string_view::npos) break;
      if (!take(fieldsOf(text.substr(0, end)))) return false;
    }
    operation.words = std::move(words_);
    operation.steps = std::move(steps_);
    operation.at = at_;
    return true;
  }
  bool isUnderWay() const { return underWay_; }

 private:
  bool take(const std::vector<std::string>& fields) {
    const std::string& what = fields[0];
    if (what == "do" && fields.size() == 2) {
      words_ = fields[1];
      steps_.clear();
      at_ = 0;
      underWay_ = false;
      return true;
    }
    if (what == "step" && fields.size() == 6) return takeStep(fields);
    if (what == "at" && fields.size() == 2) {
      const auto index = numberOf(fields[1]);
      if (!index || *index >= steps_.size()) return false;
      at_ = *index;
      underWay_ = true;  // before that nothing was touched
      return true;
    }
    if (what == "done") underWay_ = false;
    return what == "done" || what == "run";
  }

  bool takeStep(const std::vector<std::string>& fields) {
    const auto kind = numberOf(fields[1]), title = numberOf(fields[5]);
    if (!kind || *kind > static_cast<uint32_t>(Step::Kind::removeFolder) || !title) return false;
    steps_.push_back(
        {static_cast<Step::Kind>(*kind), fields[2], fields[3], fields[4], static_cast<TextId>(*title)});
    return true;
  }

  std::string words_;
  std::vector<Step> steps_;
  uint32_t at_ = 0;
  bool underWay_ = false;
};

bool isJournalName(std::string_view name) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  return name.size() == 13 && name.starts_with(kPrefix) && name.ends_with(".tmp") &&
         std::all_of(name.begin() + 4, name.begin() + 9, isDigit);
}

}  // namespace

SystemError Journal::create(FileSystem& files, TreeOperations& trees, const std::string& entry,
                            std::unique_ptr<Journal>& journal) {
  std::string folder;
  do {
    folder = MakeTempFileName(files, trees.temporaryFolder(), kPrefix, [&trees] { return trees.random(); });
  } while (equalNames(nameOf(folder), entry, false));
  if (const SystemError error = trees.makeFolder(folder)) return error;
  std::unique_ptr<JournalFile> file;
  SystemError error = trees.createJournal(fileIn(folder), file);
  if (error == 0) error = file->append(kFirstLine);
  if (error == 0) {
    journal.reset(new Journal(std::move(folder), std::move(file)));
  } else {
    file.reset();
    removeTree(files, trees, folder);
  }
  return error;
}

SystemError Journal::begin(const std::string& words, const std::vector<Step>& steps) {
  std::string text;
  addLine(text, {"do", words});
  for (const Step& step : steps) {
    addLine(text, {"step", std::to_string(static_cast<int>(step.kind)), step.path, step.target, step.backup,
                   std::to_string(static_cast<int>(step.title))});
  }
  addLine(text, {"run"});
  return file_->append(text);
}

SystemError Journal::atStep(uint32_t index) { return file_->append("at\t" + std::to_string(index) + '\n'); }

SystemError Journal::end() { return file_->append("done\n"); }

/// The file goes last: until then the next start finds that nothing is under way, and removes the rest.
void Journal::drop(FileSystem& files, TreeOperations& trees) {
  if (end() != 0) {
    // It tells nothing, then, rather than something that is wrong by now.
    file_.reset();
    trees.removeFile(fileIn(folder_));
  }
  FolderListing kept;
  if (files.list(folder_, nullptr, kept) != 0) return;
  for (uint32_t i = 0; i < kept.size(); ++i) {
    const std::string path = joinPath(folder_, kept.name(i));
    if (path != fileIn(folder_) && removeTree(files, trees, path) != 0) return;
  }
  file_.reset();
  removeTree(files, trees, folder_);
}

std::vector<InterruptedOperation> findInterrupted(FileSystem& files, TreeOperations& trees) {
  std::vector<InterruptedOperation> found;
  const std::string temporary = trees.temporaryFolder();
  FolderListing listing;
  if (temporary.empty() || files.list(temporary, nullptr, listing) != 0) return found;
  for (uint32_t i = 0; i < listing.size(); ++i) {
    const ListedEntry& entry = listing.entry(i);
    if (entry.kind != FileKind::folder || entry.isLink || !isJournalName(listing.name(i))) continue;
    const std::string folder = joinPath(temporary, listing.name(i));
    std::unique_ptr<JournalFile> file;
    std::string contents;
    JournalText text;
    InterruptedOperation operation;
    if (trees.openJournal(fileIn(folder), file, contents) != 0 || !text.read(contents, operation)) continue;
    operation.journal.reset(new Journal(folder, std::move(file)));
    if (text.isUnderWay()) {
      found.push_back(std::move(operation));
    } else {
      operation.journal->drop(files, trees);
    }
  }
  return found;
}

bool finish(FileSystem& files, TreeOperations& trees, InterruptedOperation& operation) {
  Journal& journal = *operation.journal;
  const auto count = static_cast<uint32_t>(operation.steps.size());
  // What was done so far stays when the rest fails: it can be tried again, or put back.
  const StepsEnd end = runSteps(files, trees, operation.steps, &journal, operation.at, operation.at, true);
  if (end.done < count) return false;
  journal.drop(files, trees);
  return true;
}

bool putBack(FileSystem& files, TreeOperations& trees, InterruptedOperation& operation) {
  if (!takeBackSteps(files, trees, operation.steps, operation.journal.get(), operation.at, 0)) return false;
  operation.journal->drop(files, trees);
  return true;
}

}  // namespace merivane
