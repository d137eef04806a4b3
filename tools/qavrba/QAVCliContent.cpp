// qavrba content: packing a folder into a content package and checking one.
#include <cstdio>
#include <memory>
#include <string>

#include "QAVCli.h"
#include "QAVContentPackage.h"

namespace {

// A value that may not be empty: an empty one is a usage error.
CLI::Validator NotEmpty() {
  return CLI::Validator(
      [](const std::string& text) -> std::string {
        return text.empty() ? "the value may not be empty" : std::string();
      },
      "");
}

int Pack(const std::string& dir, const std::string& out) {
  std::string error;
  if (FAILED(QAVContentPackage::Pack(dir, out, error))) return qavcli::Fail(error);
  std::printf("packed %s into %s\n", dir.c_str(), out.c_str());
  return 0;
}

int Check(const std::string& path) {
  QAVContentPackage package;
  std::string error;
  if (FAILED(package.Open(path, error))) return qavcli::Fail(error);
  std::size_t files = 0;
  for (const QAVContentPackage::Object& object : package.GetObjects())
    files += object.files.size();
  std::printf("package\t%s\nkind\t%s\ntitle\t%s\nobjects\t%zu\nfiles\t%zu\n", path.c_str(),
              package.GetKind().c_str(), package.GetTitle().c_str(), package.GetObjects().size(),
              files);
  std::printf("size\t%llu bytes (%llu inflated)\n",
              static_cast<unsigned long long>(package.GetArchiveSize()),
              static_cast<unsigned long long>(package.GetInflatedSize()));
  for (const QAVContentPackage::Object& object : package.GetObjects()) {
    std::printf("  %s\t%s\t%s\n", object.id.c_str(), object.type.c_str(), object.name.c_str());
    for (const std::string& file : object.files)
      std::printf("    %s\t%zu bytes\n", file.c_str(), package.GetFile(file)->size());
  }
  return 0;
}

void Setup(CLI::App& program) {
  CLI::App* content = program.add_subcommand(
      "content", "Content packages (.orlix): a zip archive with manifest.json and its files.");
  content->require_subcommand(1);

  auto dir = std::make_shared<std::string>();
  auto out = std::make_shared<std::string>();
  CLI::App* pack = content->add_subcommand(
      "pack", "Packs DIR (manifest.json and the files it lists) into FILE, replaced atomically.");
  pack->add_option("dir", *dir, "The folder")->required()->check(NotEmpty());
  pack->add_option("-o,--output", *out, "The package to write")->required()->check(NotEmpty());
  qavcli::OnRun(pack, [dir, out] { return Pack(*dir, *out); });

  auto file = std::make_shared<std::string>();
  CLI::App* check = content->add_subcommand(
      "check", "Checks FILE whole and prints its kind, objects, files and sizes.");
  check->add_option("file", *file, "A package")->required()->check(NotEmpty());
  qavcli::OnRun(check, [file] { return Check(*file); });
}

}  // namespace

QAV_CLI_COMMAND("content", Setup);
