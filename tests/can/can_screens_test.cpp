// The screens of the CAN bus, driven as a user drives them.
#include "can/frm_can_adv.h"
#include "can/frm_can_bus.h"
#include "can/frm_can_pick.h"
#include "model/new_store.h"
#include "projectfile/genfile.h"
#include "script/screen_script.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/table_screens_fixture.h"
#include "support/test_surroundings.h"
#include "text/number.h"

namespace ostrand {
namespace {

using platform::Answer;

constexpr platform::Moment kMoment = {2003, 3, 10, 14, 5, 0};
constexpr std::string_view kHeader =
    "Description,Priority,Reserved,DataPage,PDUFormat,PDUSpecific,SourceAddress,DataType,StartBit,"
    "Numbits,Alias,Mult,Offset,Units";

class CanScreens : public testing::TableScreens {
 protected:
  CanScreens() { store->Config.CanBusQty = 1; }

  std::unique_ptr<frmCanBus> busScreen() {
    return std::make_unique<frmCanBus>(context, CanRequest{files, "/work/"});
  }
  // A project with `count` items that can be measured.
  void giveItems(int count) {
    store->Can.CanCount = static_cast<i16>(count);
    for (int n = 1; n <= count; ++n) {
      store->Can.Item[n].Name = "Item" + NumberText(n);
      store->Can.Item[n].DataStyle = 1;
    }
  }
  std::string project() { return ORVUS_GENFILE::ProjectFileText(*store, kMoment); }

  testing::MemoryFileSystem files;
};

TEST_F(CanScreens, DoneAsksAboutImproperValues) {
  const std::pair<std::string_view, std::function<void(CanItemData&)>> spoils[] = {
      {"Name", [](auto& item) { item.Name = "iTEM1"; }},
      {"Name", [](auto& item) { item.Name = "Oil Temp"; }},
      {"Units", [](auto& item) { item.Units = "%"; }},
      {"DataId", [](auto& item) { item.DataId = "536870912"; }},
      {"DataId", [](auto& item) { item.DataId = "engine"; }},
      {"DataStyle", [](auto& item) { item.DataStyle = 7; }},
      {"StartBit", [](auto& item) { item.StartBit = 0; }},
      {"NumBits", [](auto& item) { item.NumBits = 65; }},
      {"TxDataFrame", [](auto& item) { item.TxDataFrame = "&H00"; }},
      {"RxTimeout", [](auto& item) { item.RxTimeout = 0; }},
  };
  giveItems(3);
  store->Can.Item[3].ItemMessageType = 1;
  store->Can.Item[3].TxDataFrame = "&H0123456789ABCDEF";
  store->Can.Item[3].RxDataMatch = "&H0123456789ABCDEF";
  store->Can.Item[3].RxTimeout = 1;
  busScreen()->Done();  // without a question
  for (const auto& [atFault, spoil] : spoils) {
    store->Can.Item[2] = store->Can.Item[3];
    store->Can.CanCount = 2;
    spoil(store->Can.Item[2]);
    auto screen = busScreen();
    for (const Answer answer : {Answer::kNo, Answer::kYes}) {
      forms.ExpectBoxWith("CONTINUE WITH IMPROPER VALUES ?", "", answer);
      screen->Done();
      EXPECT_EQ(screen->Result(), answer == Answer::kNo ? ModalResult::kNone : ModalResult::kDone);
      if (answer == Answer::kNo) {
        EXPECT_EQ(shown(*screen, "Item"), "2: " + store->Can.Item[2].Name);
        EXPECT_EQ(screen->Focused(), screen->Find(atFault)) << atFault;
      }
    }
  }
}

TEST_F(CanScreens, AnotherKindOfIdentifierLimitsThoseOfAllItems) {
  giveItems(3);
  store->Can.Item[1].DataId = "3000";
  store->Can.Item[1].TxDataId = "&H1FFFFFFF";
  store->Can.Item[3].DataId = "&H7FE";
  store->Can.Item[3].TxDataId = "none";
  auto screen = busScreen();
  pick(*screen, "CanBaud", "20 K");
  pick(*screen, "CanDataIDType", "11 bit");
  EXPECT_EQ(shown(*screen, "DataId"), "2047");
  EXPECT_EQ(shown(*screen, "Pgn"), "");
  EXPECT_FALSE(screen->Priority.Usable());
  type(*screen, "DataId", "x");
  EXPECT_EQ(shown(*screen, "DataId"), "2047") << "ignored";
  EXPECT_EQ(forms.beeps, 1);
  screen->Done();
  const CanModuleData& module = store->Can.Module[1];
  EXPECT_EQ(module.CanDataIDType, 0);
  const std::vector<i16> timing = {module.CanBaud, module.CanQuanta, module.CanSeg1,
                                   module.CanSeg2};
  EXPECT_EQ(timing, (std::vector<i16>{6, 40, 7, 2}));
  EXPECT_EQ(store->Can.Item[1].DataId, "2047");
  EXPECT_EQ(store->Can.Item[1].TxDataId, "&H7FF");
  EXPECT_EQ(store->Can.Item[3].DataId, "&H7FE");
  EXPECT_EQ(store->Can.Item[3].TxDataId, "none") << "no number, left for the user";
}

TEST_F(CanScreens, RenamedItemKeepsItsLevelCrossings) {
  giveItems(1);
  store->Can.Item[1].Name = "Oil";
  store->Can.Item[1].Output.Histo[2].LevelCode = "4,3,Oil2LC1(),Oil2LC2()";
  store->Can.Item[1].Output.Histo[3].LevelCode = "4,1,CoOil3LC1(),CoOil3LC2()";
  auto screen = busScreen();
  type(*screen, "Name", "Oil2");
  screen->Done();
  EXPECT_EQ(store->Can.Item[1].Output.Histo[2].LevelCode, "4,3,Oil22LC1(),Oil22LC2()");
  EXPECT_EQ(store->Can.Item[1].Output.Histo[3].LevelCode, "4,1,CoOil3LC1(),CoOil3LC2()");
}

class PickScreen : public CanScreens {
 protected:
  PickScreen() {
    present.Config.Description = "Present";
    present.J1939Fields = true;
    files.files["/work/a.29LST"] =
        "ORVUSV5\r\n" + std::string(kHeader) + "\r\n\"A\",1,0,0,0,0,0,1,1,1,A,1,0,\r\n";
  }
  std::unique_ptr<frmCanPick> pickScreen() {
    request.emplace(CanPickRequest{files, "/work/", present, "/work/a.29LST"});
    return std::make_unique<frmCanPick>(context, *request);
  }
  void expectQuestion(Answer answer) {
    forms.ExpectBoxWith("SAVE PICK LIST FILE", "Edits have been made", answer);
  }

  CanListItem present;
  std::optional<CanPickRequest> request;
};

TEST_F(PickScreen, EditsAreAskedForAndSaved) {
  const std::string a = "\"A\",1,0,0,0,0,0,1,1,1,A,1,0,\r\n";
  const std::string p = "\"Present\",0,0,0,0,0,0,0,1,1,,1,0,\r\n";
  const std::string head = "ORVUSV5\r\n" + std::string(kHeader) + "\r\n";
  auto saving = pickScreen();
  press(*saving, "Add");
  expectQuestion(Answer::kYes);
  saving->Cancel();
  EXPECT_EQ(saving->Result(), ModalResult::kCancel);
  EXPECT_EQ(files.files["/work/a.29LST"], head + a + p);

  auto copy = pickScreen();
  pick(*copy, "Items", "1: A");
  press(*copy, "Replace");
  pick(*copy, "Items", "2: Present");
  press(*copy, "Delete");
  forms.ExpectSave("/work/copy");
  press(*copy, "Save");
  EXPECT_EQ(forms.dialog.title, "SAVE PICK LIST FILE");
  EXPECT_EQ(forms.dialog.initialFolder, "/work/");
  EXPECT_EQ(forms.dialog.defaultExtension, ".29LST");
  EXPECT_EQ(files.files["/work/copy.29LST"], head + p);
  copy->Cancel();
  EXPECT_EQ(copy->Result(), ModalResult::kCancel) << "no edits are left";
}

TEST_F(PickScreen, ItemThatProjectCannotStoreIsNotPicked) {
  for (const std::string line :
       {"\"Oil [bar]\",1,0,0,0,0,0,1,1,1,A,1,0,", "\"A\",1,0,0,0,0,0,1,1,1,A[1,1,0,",
        "\"A\",1,0,0,0,0,0,1,1,1,A,1,0,[V"}) {
    files.files["/work/a.29LST"] = "ORVUSV5\r\n" + std::string(kHeader) + "\r\n" + line + "\r\n";
    auto screen = pickScreen();
    screen->Items.PickAt(0);
    forms.helpLines.clear();
    screen->Done();
    EXPECT_EQ(screen->Result(), ModalResult::kNone) << line;
    EXPECT_FALSE(request->picked);
    ASSERT_EQ(forms.helpLines.size(), 1U);
    EXPECT_TRUE(forms.helpLines[0].starts_with("A text can't hold \"[\""));
  }
  EXPECT_EQ(forms.beeps, 3);
}

TEST_F(PickScreen, ListThatHasDisappearedIsForgotten) {
  files.files.clear();
  EXPECT_EQ(shown(*pickScreen(), "ListName"), "");
  EXPECT_EQ(request->path, "");
}

TEST_F(PickScreen, ListStaysOpenWhenSaveFails) {
  auto screen = pickScreen();
  press(*screen, "Add");
  files.readOnly.insert("/work/a.29LST");
  const std::string before = files.files["/work/a.29LST"];
  expectQuestion(Answer::kYes);
  forms.ExpectBoxWith("TROUBLE", "has occurred in frmCanPick.SaveList.");
  screen->Cancel();
  EXPECT_EQ(screen->Result(), ModalResult::kNone);
  EXPECT_EQ(files.files["/work/a.29LST"], before);
  forms.ExpectSave("/work/b.11PCK");
  forms.ExpectBoxWith("SAVE PICK LIST FILE", "29 bits");
  press(*screen, "Save");
  forms.ExpectSave(std::nullopt);
  press(*screen, "Save");
  expectQuestion(Answer::kNo);
  screen->Cancel();
}

// A decimal identifier whose description looks like the mark of a hexadecimal one.
TEST_F(PickScreen, ItemOfTheProjectSurvivesItsList) {
  giveItems(1);
  CanItemData& item = store->Can.Item[1];
  item.DataId = "2748";
  item.Description = "&Hello";
  auto screen = busScreen();
  host.scenes = {[&](Screen& list) {
    press(list, "Add");
    forms.ExpectSave("/work/hello.29PCK");
    press(list, "Save");
    list.Cancel();
  }};
  press(*screen, "Pick");
  const auto list = ReadCanList(files, "/work/hello.29PCK");
  ASSERT_TRUE(list);
  EXPECT_EQ(list.Value().Items[0].Config.Description, "&Hello");
  EXPECT_EQ(list.Value().Items[0].Config.DataID(), "&HABC");
}

// A session whose open dialog is recorded and cancelled.
TEST(CanSession, PickListsAreLookedForInTheWorkFolder) {
  class Dialogs : public ScriptForms {
   public:
    using ScriptForms::ScriptForms;
    std::optional<std::string> AskOpen(const platform::FileDialog& dialog) override {
      folder = dialog.initialFolder;
      return std::nullopt;
    }
    std::string folder;
  };
  testing::MemoryFileSystem files;
  files.files["/projects/new.VKG"] = "[GEN VERSION]\r\nVersion=6.0\r\n";
  testing::FixedClock clock;
  testing::ScriptedForms inner;
  Dialogs forms(inner);
  testing::TestSurroundings around{files, clock, forms, "/lists/"};
  OstrandEvents nobody;
  const auto store = NewStore();
  Ostrand session{*store, around.all, nobody};
  ScreenScript player(session, forms,
                      "open frmConfig\n type CanBusQty 1\ndone\nopen frmCanBus\n press Add\n"
                      " open frmCanPick\n press Open\n cancel\n answer \"MEASUREMENT BLOCKS\" no\n"
                      "cancel\n");
  bool cancelled = false;
  session.OpenFile("/projects/new.VKG", cancelled);
  const Result<> played = player.Run();
  EXPECT_TRUE(played) << played.ErrorText();
  EXPECT_EQ(forms.folder, "/lists/");
}

}  // namespace
}  // namespace ostrand
