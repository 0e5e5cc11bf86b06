#include "cli/run_folders.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/message_format.h"
#include "base/paths.h"
#include "cli/messages.h"
#include "cli/progress_line.h"
#include "folders/folder_comparison.h"
#include "output/folder_patch.h"
#include "output/folder_writers.h"

namespace merivane {
namespace {

class FolderDiffRun {
 public:
  FolderDiffRun(const DiffOptions& options, const DiffEnvironment& environment)
      : options_(options), environment_(environment), folderOptions_(options.folders) {
    folderOptions_.text = options.compare;
    if (findFolderWriter(*options.format) != nullptr) return;
    // A patch has to know every difference of contents and of names.
    if (!folderOptions_.comparesContents()) folderOptions_.quickContents = true;
    folderOptions_.ignoreNameCase = false;
    folderOptions_.subfolders = true;
  }

  int run() {
    FolderComparison comparison;
    const Result result = compare(comparison);
    if (result != Result::success) {
      tell(folderResultMessage(result, options_.paths));
      return kExitTrouble;
    }
    std::vector<FolderTrouble> left;
    const SystemError error = write(comparison, left);
    tell(comparison.notCompared);
    tell(left);
    if (error != 0) {
      if (error != environment_.brokenPipe) {
        tell(formatMessage(TextId::couldNotExport, {systemErrorText(error)}));
      }
      return kExitTrouble;
    }
    if (!comparison.notCompared.empty() || !left.empty()) return kExitTrouble;
    return comparison.differs() ? kExitDifferences : kExitNoDifference;
  }

 private:
  Result compare(FolderComparison& comparison) {
    FolderProgress progress;
    std::optional<ProgressLine> line;
    const TerminalFacts terminal = environment_.terminal();
    if (terminal.errorsToo) line.emplace(progress, terminal, environment_.standardError);
    return compareFolders(environment_.files, options_.paths, folderOptions_, nullptr, comparison, &progress);
  }

  SystemError write(const FolderComparison& comparison, std::vector<FolderTrouble>& left) {
    WrittenFolders folders = {comparison, {options_.paths[0], options_.paths[1]}, {}};
    FolderWriter* const writer = findFolderWriter(*options_.format);
    for (int category = 0; category < kFolderCategories; ++category) {
      folders.shows[category] =
          options_.shows ? (*options_.shows >> category & 1) != 0
                         : writer == writeFolderJson || category != static_cast<int>(FolderCategory::same);
    }
    const auto writeAll = [&](ByteSink& sink) {
      if (writer != nullptr) {
        writer(folders, options_.writing, sink);
      } else {
        writeFolderPatch(environment_.files, folders, folderOptions_, options_.writing, sink, left);
      }
    };
    if (options_.output.empty()) return writeToFile(environment_.standardOutput, writeAll);
    std::unique_ptr<OutputFile> file;
    const SystemError error = environment_.files.create(options_.output, file);
    return error == 0 ? writeToFile(*file, writeAll) : error;
  }

  void tell(const std::string& message) {
    report(environment_.standardError, message, environment_.terminal().bytes);
  }

  void tell(const std::vector<FolderTrouble>& troubles) {
    for (const FolderTrouble& trouble : troubles) {
      std::string message =
          joinPath(options_.paths[trouble.side], trouble.name) + ": " + notComparedText(trouble.reason);
      if (trouble.error != 0) message += " (" + systemErrorText(trouble.error) + ")";
      tell(message);
    }
  }

  const DiffOptions& options_;
  const DiffEnvironment& environment_;
  FolderOptions folderOptions_;
};

}  // namespace

int runFolders(const DiffOptions& options, const DiffEnvironment& environment) {
  return FolderDiffRun(options, environment).run();
}

}  // namespace merivane
