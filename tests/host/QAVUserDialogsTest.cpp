// The host's services for commands that talk with the user: header arguments,
// notifications between commands, message boxes, notify dialogs, progress
// tasks and the start-up search path.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QAVAfrArguments.h"
#include "QAVApplicationFrame.h"
#include "QAVBoxingOfQAVUnicodeString.h"
#include "QAVCallbackManager.h"
#include "QAVCommandHeader.h"
#include "QAVDlgNotify.h"
#include "QAVFileServices.h"
#include "QAVFillDictionary.h"
#include "QAVHostDriver.h"
#include "QAVNotification.h"
#include "QAVProgressWatch.h"
#include "QAVTaskController.h"
#include "QAVTestSupport.h"
#include "QAVVidFraMessageBox.h"
#include "QAVWidgetInput.h"

namespace {

// A command that keeps the arguments it was created with and the
// notifications it receives.
class ArgumentsCmd : public QAVCommand {
 public:
  ArgumentsCmd() : QAVCommand(nullptr, "ArgumentsCmd") {
    QAVAfrArguments::Iterator next(QAVAfrGetArguments());
    while (QAVBaseUnknown* argument = next.Next()) {
      QAVUnicodeString text;
      if (SUCCEEDED(QAVBoxingOfQAVUnicodeString::Unbox(argument, text)))
        arguments.push_back(text.ToString().str());
    }
  }
  int AnalyseNotification(QAVCommand* from, QAVNotification* notification) override {
    received.push_back({from, notification->GetFlag()});
    return 1;
  }
  std::vector<std::string> arguments;
  std::vector<std::pair<QAVCommand*, int>> received;
};

class UserDialogsTest : public qavtest::HostTest {};

TEST_F(UserDialogsTest, HeadersGiveTheirArgumentsToTheCommandsTheyStart) {
  QAVFillDictionary::Register("ArgumentsCmd",
                              [] { return static_cast<QAVCommand*>(new ArgumentsCmd); });
  const auto file = _scratch.Write("import.headers",
                                   "# content creation\n"
                                   "CreateMaterialHdr = ArgumentsCmd Material\n"
                                   "CreateTwoHdr = ArgumentsCmd Props  extra\n"
                                   "PlainHdr = ArgumentsCmd\n");
  std::string error;
  ASSERT_EQ(Driver().LoadCommandHeaders(file.string(), error), 3) << error;
  const auto started = [](const char* header) {
    return dynamic_cast<ArgumentsCmd*>(QAVCommandHeader::GetHeaderFromList(header)->StartCommand());
  };
  EXPECT_EQ(started("CreateMaterialHdr")->arguments, std::vector<std::string>{"Material"});
  EXPECT_EQ(started("CreateTwoHdr")->arguments, (std::vector<std::string>{"Props", "extra"}));
  EXPECT_TRUE(started("PlainHdr")->arguments.empty());
  // Outside a start there are none; a command made directly sees none either.
  EXPECT_EQ(QAVAfrGetArguments(), nullptr);
  EXPECT_TRUE((new ArgumentsCmd)->arguments.empty());
  QAVUnicodeString untouched("kept");
  EXPECT_EQ(QAVBoxingOfQAVUnicodeString::Unbox(nullptr, untouched), E_FAIL);
  EXPECT_EQ(untouched.ToString().str(), "kept");

  EXPECT_EQ(Driver().LoadCommandHeaders(
                _scratch.Write("bad.headers", "= ArgumentsCmd Material\n").string(), error),
            -1);
  EXPECT_NE(error.find("bad.headers:1"), std::string::npos) << error;
}

TEST_F(UserDialogsTest, NotificationsBetweenCommandsArriveAtTheNextLoopPass) {
  auto* sender = new ArgumentsCmd;
  auto* target = new ArgumentsCmd;
  auto* ending = new ArgumentsCmd;
  sender->SendNotification(target, QAVMakeRef<QAVNotification>(1).get());
  sender->SendNotification(nullptr, QAVMakeRef<QAVNotification>(2).get());  // to itself
  sender->SendNotification(ending, QAVMakeRef<QAVNotification>(3).get());
  ending->RequestDelayedDestruction();
  EXPECT_TRUE(target->received.empty());
  Driver().Idle();
  EXPECT_EQ(target->received, (std::vector<std::pair<QAVCommand*, int>>{{sender, 1}}));
  EXPECT_EQ(sender->received, (std::vector<std::pair<QAVCommand*, int>>{{sender, 2}}));
  sender->RequestDelayedDestruction();
  target->RequestDelayedDestruction();
}

TEST_F(UserDialogsTest, MessageBoxesAndNoticesAreRecordedAndAnswered) {
  auto* box = new QAVVidFraMessageBox("ImportOrbelWarning", 3, 18);
  box->SetTitle(QAVUnicodeString("Import warning"));
  box->SetText(QAVUnicodeString("Be careful."));
  box->SetInformativeText(QAVUnicodeString("Space: Studio"));
  box->SetAutoClose(true);
  std::vector<std::string> answers;
  for (const char* event : {QAVVidFraMessageBox::ACCEPT(), QAVVidFraMessageBox::REJECT()})
    box->GetCallbackManager()->AddCallback(
        event, [&answers](const char* name, void*, QAVNotification*, void*, QAVCallback) {
          answers.emplace_back(name);
        });
  // A hidden box is not shown and cannot be answered.
  EXPECT_TRUE(QAVVidFraMessageBox::GetShownBoxes().empty());
  EXPECT_FALSE(QAVWidgetInput::AnswerMessageBox(box, true));
  box->SetVisibility(true);
  const auto shown = QAVVidFraMessageBox::GetShownBoxes();
  ASSERT_EQ(shown.size(), 1U);
  EXPECT_EQ(shown[0].name, "ImportOrbelWarning");
  EXPECT_EQ(shown[0].informativeText, "Space: Studio");
  EXPECT_EQ(shown[0].actionIcon, 3);
  EXPECT_EQ(shown[0].buttons, 18);
  EXPECT_TRUE(QAVWidgetInput::AnswerMessageBox(box, false));
  EXPECT_EQ(answers, std::vector<std::string>{QAVVidFraMessageBox::REJECT()});
  EXPECT_TRUE(box->IsDestructionRequested());  // auto-closing

  auto* notice = new QAVDlgNotify("ContentOrbelWarning");
  notice->SetTitle(QAVUnicodeString("Import warning"));
  notice->SetText(QAVUnicodeString("Cannot find any content to import."));
  EXPECT_EQ(notice->DisplayBlocked(), 0);
  ASSERT_EQ(QAVDlgNotify::GetShownNotices().size(), 1U);
  EXPECT_EQ(QAVDlgNotify::GetShownNotices()[0].text, "Cannot find any content to import.");
  EXPECT_EQ(Driver().GetJournal("notify").size(), 1U);
  notice->RequestDelayedDestruction();
  EXPECT_EQ(QAVApplicationFrame::GetFrame()->GetApplicationDocument()->GetName(),
            "ApplicationDocument");
}

// A task that reports as the importer does and gives a set result.
class ReportingTask : public QAVIProgressTask {
 public:
  explicit ReportingTask(HRESULT result) : _result(result) {}
  HRESULT PerformTask(QAVIProgressTaskUI* ui, void* data) override {
    seenData = data;
    ui->SetRange(0, 100);
    ui->SetTitle(QAVUnicodeString("Importing"));
    ui->SetProgress(10);
    ui->SetProgress(60);
    return _result;
  }
  void* seenData = nullptr;

 private:
  HRESULT _result;
};

TEST_F(UserDialogsTest, TasksRunToTheirEndWithTheirProgressWatched) {
  std::vector<std::string> seen;
  QAVProgressWatch::SetListener([&seen](const QAVProgressReport& r) {
    seen.push_back(r.title + " " + std::to_string(r.value) + "/" + std::to_string(r.high) +
                   (r.finished ? " end" : ""));
  });
  auto task = QAVMakeRef<ReportingTask>(E_FAIL);
  int data = 0;
  EXPECT_EQ(QAVTaskController::Schedule(task.get(), 0, &data, 1, 0, 0.0, 1), E_FAIL);
  EXPECT_EQ(task->seenData, &data);
  EXPECT_EQ(seen, (std::vector<std::string>{" 0/100", "Importing 0/100", "Importing 10/100",
                                            "Importing 60/100", "Importing 60/100 end"}));
  EXPECT_EQ(
      QAVTaskController::Schedule(QAVMakeRef<ReportingTask>(S_OK).get(), 0, nullptr, 1, 0, 0.0, 1),
      S_OK);
  EXPECT_EQ(QAVTaskController::Schedule(nullptr, 0, nullptr, 1, 0, 0.0, 1), E_FAIL);
  QAVProgressWatch::SetListener(nullptr);
  EXPECT_EQ(task->GetRefCount(), 1U);
}

TEST_F(UserDialogsTest, FindPathTakesTheFirstStartupDirectoryThatHasTheFile) {
  const auto first = _scratch.path() / "first";
  const auto second = _scratch.path() / "second";
  _scratch.Write("second/materials/Sample_Materials.orlix", "x");
  _scratch.Write("first/materials/Other.orlix", "x");
  _scratch.Write("first/materials/Both.orlix", "x");
  _scratch.Write("second/materials/Both.orlix", "x");
  const qavtest::ScopedEnv path("QAVStartupPath", first.string() + "::" + second.string());
  QAVUnicodeString found("untouched");
  ASSERT_EQ(
      QAVFindPath("QAVStartupPath", QAVUnicodeString("materials/Sample_Materials.orlix"), found),
      S_OK);
  EXPECT_EQ(found.ToString().str(), (second / "materials/Sample_Materials.orlix").string());
  ASSERT_EQ(QAVFindPath("QAVStartupPath", QAVUnicodeString("materials/Both.orlix"), found), S_OK);
  EXPECT_EQ(found.ToString().str(), (first / "materials/Both.orlix").string());
  found = QAVUnicodeString("untouched");
  EXPECT_EQ(QAVFindPath("QAVStartupPath", QAVUnicodeString("materials/None.orlix"), found), E_FAIL);
  EXPECT_EQ(QAVFindPath("QAVNoSuchPath", QAVUnicodeString("materials/Both.orlix"), found), E_FAIL);
  EXPECT_EQ(QAVFindPath("QAVStartupPath", QAVUnicodeString(), found), E_FAIL);
  EXPECT_EQ(found.ToString().str(), "untouched");
}

}  // namespace
