// qavrba files: directory listing and the backplate and texture searches.
#include <cstdio>
#include <memory>
#include <string>

#include "QAVCli.h"
#include "QAVFileServices.h"
#include "QAVListValQAVUnicodeString.h"
#include "QAVRbaPathAndFileServices.h"

namespace {

constexpr const char* kName = "files";

int List(const qavcli::Args& args) {
  std::string directory;
  QAVListValQAVUnicodeString extensions;
  for (std::size_t i = 1; i < args.size(); ++i) {
    if (args[i] == "--ext") {
      if (i + 1 >= args.size()) return qavcli::UsageError(kName, "--ext needs an extension");
      extensions.Append(QAVUnicodeString(args[++i]));
    } else if (directory.empty() && !args[i].empty() && args[i][0] != '-') {
      directory = args[i];
    } else {
      return qavcli::UsageError(kName, "unexpected argument '" + args[i] + "'");
    }
  }
  if (directory.empty()) return qavcli::UsageError(kName, "list needs a directory");
  // The service gives an empty list for a directory it cannot read; say so
  // rather than print nothing.
  std::unique_ptr<QAVListValQAVUnicodeString> files(
      QAVRbaPathAndFileServices::GetListOfDirectoryFile(directory.c_str(), extensions));
  int isDirectory = 0;
  if (FAILED(
          QAVRbaPathAndFileServices::GetFileInfo(QAVUnicodeString(directory), "", isDirectory)) ||
      !isDirectory || _QAVFileAccess(QAVUnicodeString(directory), QAV_ACCESS_READ, 0) != 0)
    return qavcli::Fail("cannot read the directory '" + directory + "'");
  if (!files) return qavcli::Fail("out of memory");
  for (const QAVUnicodeString& name : *files)
    std::printf("%s\n", name.c_str());
  return 0;
}

int Find(const qavcli::Args& args, bool backplate) {
  if (args.size() != 2 || args[1].empty())
    return qavcli::UsageError(kName, args[0] + " needs one file name");
  QAVUnicodeString found;
  if (backplate)
    QAVRbaPathAndFileServices::RetreiveBackplatePath(QAVUnicodeString(args[1]), found);
  else
    QAVRbaPathAndFileServices::RetreiveTexturePath(QAVUnicodeString(args[1]), found);
  if (found.IsEmpty())
    return qavcli::Fail(std::string(backplate ? "backplate" : "texture") + " '" + args[1] +
                        "' not found along QAVGraphicPath (every entry but the last) nor under " +
                        (backplate ? "BackplatePath" : "AmbiencePath") +
                        " of RenderingLiveSettings");
  std::printf("%s\n", found.c_str());
  return 0;
}

int Files(const qavcli::Args& args) {
  if (args.empty()) return qavcli::UsageError(kName, "missing subcommand");
  if (args[0] == "list") return List(args);
  if (args[0] == "find-backplate") return Find(args, true);
  if (args[0] == "find-texture") return Find(args, false);
  return qavcli::UsageError(kName, "unknown subcommand '" + args[0] + "'");
}

}  // namespace

QAV_CLI_COMMAND(kName,
                "  qavrba files list DIR [--ext EXT]...   files of DIR (not subdirectories); "
                "with --ext, those whose\n"
                "                                         name ends in EXT in lower or upper "
                "case\n"
                "  qavrba files find-backplate NAME       where the backplate NAME lies along "
                "QAVGraphicPath\n"
                "  qavrba files find-texture NAME         where the ambience texture NAME lies "
                "along QAVGraphicPath",
                Files);
