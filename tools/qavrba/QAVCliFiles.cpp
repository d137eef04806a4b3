// qavrba files: directory listing and the backplate and texture searches.
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "QAVCli.h"
#include "QAVFileServices.h"
#include "QAVListValQAVUnicodeString.h"
#include "QAVRbaPathAndFileServices.h"

namespace {

int List(const std::string& directory, const std::vector<std::string>& extensionTexts) {
  QAVListValQAVUnicodeString extensions;
  for (const std::string& extension : extensionTexts)
    extensions.Append(QAVUnicodeString(extension));
  // The service gives an empty list for a directory it cannot read; say so
  // rather than print nothing.
  std::unique_ptr<QAVListValQAVUnicodeString> files(
      QAVRbaPathAndFileServices::GetListOfDirectoryFile(directory.c_str(), extensions));
  int isDirectory = 0;
  if (FAILED(
          QAVRbaPathAndFileServices::GetFileInfo(QAVUnicodeString(directory), "", isDirectory)) ||
      !isDirectory || _QAVFileAccess(QAVUnicodeString(directory), QAV_ACCESS_READ, 0) != 0) {
    std::error_code ec;
    if (!std::filesystem::exists(directory, ec))
      return qavcli::Fail("'" + directory + "': no such directory");
    if (!std::filesystem::is_directory(directory, ec))
      return qavcli::Fail("'" + directory + "' is not a directory");
    return qavcli::Fail("cannot read the directory '" + directory + "'");
  }
  if (!files) return qavcli::Fail("out of memory");
  for (const QAVUnicodeString& name : *files)
    std::printf("%s\n", name.c_str());
  return 0;
}

int Find(const std::string& name, bool backplate) {
  QAVUnicodeString found;
  if (backplate)
    QAVRbaPathAndFileServices::RetreiveBackplatePath(QAVUnicodeString(name), found);
  else
    QAVRbaPathAndFileServices::RetreiveTexturePath(QAVUnicodeString(name), found);
  if (found.IsEmpty())
    return qavcli::Fail(std::string(backplate ? "backplate" : "texture") + " '" + name +
                        "' not found along QAVGraphicPath (every entry but the last) nor under " +
                        (backplate ? "BackplatePath" : "AmbiencePath") +
                        " of RenderingLiveSettings");
  std::printf("%s\n", found.c_str());
  return 0;
}

void Setup(CLI::App& program) {
  CLI::App* files =
      program.add_subcommand("files", "Directory listing and the backplate and texture searches.");
  files->require_subcommand(1);

  auto directory = std::make_shared<std::string>();
  auto extensions = std::make_shared<std::vector<std::string>>();
  CLI::App* list = files->add_subcommand(
      "list",
      "Files of DIR (not subdirectories); with --ext, those whose name ends in EXT in lower or "
      "upper case.");
  list->add_option("dir", *directory, "A directory")->required();
  list->add_option("--ext", *extensions, "An extension (repeatable)")->allow_extra_args(false);
  qavcli::OnRun(list, [directory, extensions] { return List(*directory, *extensions); });

  auto name = std::make_shared<std::string>();
  for (const bool backplate : {true, false}) {
    CLI::App* find = files->add_subcommand(
        backplate ? "find-backplate" : "find-texture",
        backplate ? "Where the backplate NAME lies along QAVGraphicPath."
                  : "Where the ambience texture NAME lies along QAVGraphicPath.");
    find->add_option("name", *name, "A file name")->required()->check([](const std::string& n) {
      return n.empty() ? std::string("the name is empty") : std::string();
    });
    qavcli::OnRun(find, [name, backplate] { return Find(*name, backplate); });
  }
}

}  // namespace

QAV_CLI_COMMAND("files", Setup);
