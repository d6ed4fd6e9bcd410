// The screens of the CAN bus, driven as a user drives them.
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <map>

#include "can/frm_can_adv.h"
#include "can/frm_can_bus.h"
#include "can/frm_can_pick.h"
#include "model/defaults.h"
#include "projectfile/genfile.h"
#include "support/memory_filesystem.h"
#include "support/scripted_forms.h"
#include "text/number.h"

namespace ostrand {
namespace {

using platform::Answer;

constexpr platform::Moment kMoment = {2003, 3, 10, 14, 5, 0};
constexpr std::string_view kHeader =
    "Description,Priority,Reserved,DataPage,PDUFormat,PDUSpecific,SourceAddress,DataType,StartBit,"
    "Numbits,Alias,Mult,Offset,Units";

// What a user does on the screens that open, one after the other.
class UserHost : public ScreenHost {
 public:
  std::deque<std::function<void(Screen&)>> next;
  void ShowModal(Screen& screen) override {
    ASSERT_FALSE(next.empty()) << screen.Name();
    const auto does = std::move(next.front());
    next.pop_front();
    does(screen);
  }
};

class CanScreens : public ::testing::Test {
 protected:
  CanScreens() {
    ORVUS_COMMON::SetAllDefaults(*store);
    store->Config.CanBusQty = 1;
  }

  // A user's actions; each control is found by its name and must be usable.
  static Control& use(Screen& screen, std::string_view name) {
    Control* control = screen.Find(name);
    EXPECT_NE(control, nullptr) << name;
    EXPECT_TRUE(control->Usable()) << name;
    EXPECT_TRUE(screen.MoveFocus(control)) << name;
    return *control;
  }
  static void type(Screen& screen, std::string_view name, std::string_view keys) {
    EXPECT_TRUE(use(screen, name).TypeText(keys));
    screen.MoveFocus(nullptr);
  }
  static void pick(Screen& screen, std::string_view name, std::string_view text) {
    EXPECT_TRUE(use(screen, name).Pick(text)) << text;
  }
  static void press(Screen& screen, std::string_view name) { use(screen, name).Press(); }
  static std::string text(const Screen& screen, std::string_view name) {
    return screen.Find(name)->Text();
  }
  static bool open(Screen& screen, std::string_view name) {
    for (const Screen::Opener& opener : screen.Openers()) {
      if (opener.name == name) return opener.open({});
    }
    return false;
  }

  std::unique_ptr<frmCanBus> busScreen(CanHooks hooks = {}) {
    return std::make_unique<frmCanBus>(context, files, "/work/", std::move(hooks));
  }
  // A project with so many items that can be measured.
  void giveItems(int count) {
    store->Can.CanCount = static_cast<i16>(count);
    for (int n = 1; n <= count; ++n) {
      store->Can.Item[n].Name = "Item" + NumberText(n);
      store->Can.Item[n].DataStyle = 1;
    }
  }
  static std::string told(const CanItemData& item) {
    const std::string parts[] = {item.Name,
                                 item.Description,
                                 item.DataId,
                                 NumberText(int{item.DataStyle}),
                                 NumberText(int{item.StartBit}),
                                 NumberText(int{item.NumBits}),
                                 NumberText(int{item.Reps}),
                                 NumberText(item.DefaultMult),
                                 NumberText(item.DefaultOffset),
                                 item.Units,
                                 item.DataResolution,
                                 NumberText(int{item.ItemMessageType}),
                                 item.TxDataId,
                                 item.TxDataFrame,
                                 item.RxDataMatch,
                                 NumberText(item.RxTimeout)};
    std::string all;
    for (const std::string& part : parts) all += part + "|";
    return all;
  }
  std::string project() { return ORVUS_GENFILE::ProjectFileText(*store, kMoment); }

  testing::ScriptedForms forms;
  testing::MemoryFileSystem files;
  UserHost host;
  OptionValues options;
  std::vector<i32> kinds;
  std::unique_ptr<ProjectStore> store = NewStore();
  ScreenContext context{*store, forms, host, options, 0, kinds};
};

TEST_F(CanScreens, AnItemIsMadeFieldByFieldAndStoredAtDone) {
  const std::string before = project();
  auto screen = busScreen();
  EXPECT_FALSE(open(*screen, "frmCanPick"));

  screen->CanBusEnabled.Check(true);
  type(*screen, "CanAddress", "96");
  pick(*screen, "CanBaud", "20 K");
  press(*screen, "Add");
  type(*screen, "Name", "3Oil Temp_1");  // "3" and " " are refused
  EXPECT_EQ(forms.beeps, 2);
  type(*screen, "Description", "Oil, hot side");
  type(*screen, "DataId", "&h18feca03");
  EXPECT_EQ(text(*screen, "Pgn"), "&HFECA");
  EXPECT_EQ(screen->Find("Priority")->ToolTip, "110");
  type(*screen, "Priority", "9");  // the largest is 7
  EXPECT_EQ(text(*screen, "DataId"), "&H1CFECA03");
  pick(*screen, "DataStyle", "4");
  type(*screen, "StartBit", "65");
  type(*screen, "NumBits", "0");
  type(*screen, "NumVals", "65");
  type(*screen, "Mult", "0.03125");
  type(*screen, "Offset", "-273.15");
  type(*screen, "Units", "deg C");
  pick(*screen, "DataType", "FP2");
  use(*screen, "Public").Check(true);
  pick(*screen, "ItemMessageType", "Transmit and receive");
  type(*screen, "TxDataId", "99999999999");
  type(*screen, "TxDataFrame", "&h00feca0000000000");
  type(*screen, "RxDataMatch", "&HxxxxCA00XXXXXXXX");
  type(*screen, "RxDataMask", "255");
  type(*screen, "RxTimeout", "20000");
  EXPECT_EQ(project(), before) << "nothing reaches the project before Done";
  screen->Done();
  ASSERT_EQ(screen->Result(), ModalResult::kDone);

  const CanModuleData& module = store->Can.Module[1];
  EXPECT_EQ(module.CanBusEnabled, -1);
  EXPECT_EQ(module.CanAddress, 96);
  EXPECT_EQ(module.CanBaud, 6);
  EXPECT_EQ(module.CanQuanta, 40);
  EXPECT_EQ(module.CanSeg1, 7);
  EXPECT_EQ(module.CanSeg2, 2);
  ASSERT_EQ(store->Can.CanCount, 1);
  const CanItemData& item = store->Can.Item[1];
  EXPECT_EQ(told(item),
            "OilTemp_1|Oil, hot side|&H1CFECA03|4|64|1|64|0.03125|-273.15|degC|FP2|1|536870911|"
            "&H00FECA0000000000|&HXXXXCA00XXXXXXXX|20000|");
  EXPECT_EQ(item.Enabled, 1);
  EXPECT_EQ(item.Public, -1);
  EXPECT_EQ(item.RxDataMask, "255");
}

TEST_F(CanScreens, TextsOfAFrameAreTestedWhenTheyAreTaken) {
  struct Case {
    std::string_view field, keys, kept, title;  // no title for one that is good
  };
  constexpr std::string_view kHex = "Hex Validation Failed";
  constexpr std::string_view kMatch = "Match Validation Failed";
  constexpr std::string_view kTime = "Invalid Timeout Value";
  constexpr Case cases[] = {
      {"TxDataFrame", "&H0123456789abcdef", "&H0123456789ABCDEF", ""},
      {"TxDataFrame", "0123456789ABCDEF01", "0123456789ABCDEF01", kHex},
      {"TxDataFrame", "&H0123456789ABCDE", "&H0123456789ABCDE", kHex},
      {"TxDataFrame", "&H0123456789ABCDEF0", "&H0123456789ABCDEF0", kHex},
      {"TxDataFrame", "&HXX23456789ABCDEF", "&HXX23456789ABCDEF", kHex},
      {"TxDataFrame", "", "", kHex},
      {"RxDataMatch", "&H0123xx67XXABCDEF", "&H0123XX67XXABCDEF", ""},
      {"RxDataMatch", "&H0XX3456789ABCDEF", "&H0XX3456789ABCDEF", kMatch},
      {"RxDataMatch", "&HX123456789ABCDEF", "&HX123456789ABCDEF", kMatch},
      {"RxDataMatch", "&HXXXXXXXXXXXXXXXG", "&HXXXXXXXXXXXXXXXG", kMatch},
      {"RxTimeout", "1", "1", ""},
      {"RxTimeout", "0", "0", kTime},
      {"RxTimeout", "20001", "20001", kTime},
      {"RxTimeout", "2.5", "20001", kTime},
      {"RxTimeout", "soon", "20001", kTime},
      {"RxTimeout", "3000000000", "20001", kTime},
  };
  const std::map<std::string_view, std::string> texts = {
      {kHex,
       "The 64-bit Tx Data Frame must begin with \"&H\" \r\nfollowed by 16 Hexadecimal characters "
       "(0-9,A-F).\r\nExample: \"&H0123456789ABCDEF\""},
      {kMatch,
       "The 64-bit Rx Data Match string must begin with \"&H\" \r\nfollowed by 16 Hexadecimal "
       "characters (0-9,A-F)\r\nor the Masking Pair  \"XX\" starting on even digits.\r\nExample: "
       "\"&H0123XX67XXABCDEF\""},
      {kTime,
       "The Rx Timeout value (in milliseconds)\r\nmust be a numeric value from 1 to 20000."}};
  giveItems(1);
  store->Can.Item[1].ItemMessageType = 1;
  auto screen = busScreen();
  for (const Case& row : cases) {
    SCOPED_TRACE(row.keys);
    if (!row.title.empty()) forms.ExpectBox(std::string(row.title), texts.at(row.title));
    type(*screen, row.field, row.keys);
    EXPECT_EQ(text(*screen, row.field), row.kept);
  }
}

TEST_F(CanScreens, DoneAsksAboutImproperValues) {
  const auto improper = [&](const std::function<void(CanItemData&)>& spoil) {
    giveItems(2);
    spoil(store->Can.Item[2]);
    auto screen = busScreen();
    forms.ExpectBox("CONTINUE WITH IMPROPER VALUES ?",
                    "Some of the current CAN values are not valid. Proceed Anyway ?", Answer::kNo);
    screen->Done();
    EXPECT_EQ(screen->Result(), ModalResult::kNone);
    forms.ExpectBoxWith("CONTINUE WITH IMPROPER VALUES ?", "", Answer::kYes);
    screen->Done();
    EXPECT_EQ(screen->Result(), ModalResult::kDone);
    store->Can.Item[2] = store->Can.Item[3];
  };
  improper([](CanItemData& item) { item.Name = "iTEM1"; });
  improper([](CanItemData& item) { item.Name = "Oil Temp"; });
  improper([](CanItemData& item) { item.Units = "%"; });
  improper([](CanItemData& item) { item.DataId = "536870912"; });
  improper([](CanItemData& item) { item.DataId = "engine"; });
  improper([](CanItemData& item) { item.DataStyle = 7; });
  improper([](CanItemData& item) { item.StartBit = 0; });
  improper([](CanItemData& item) { item.NumBits = 65; });
  improper([](CanItemData& item) {
    item.ItemMessageType = 1;
    item.TxDataFrame = "&H00";
  });
  improper([](CanItemData& item) {
    item.ItemMessageType = 1;
    item.RxTimeout = 0;
  });
}

TEST_F(CanScreens, AnotherKindOfIdentifierLimitsThoseOfAllItems) {
  giveItems(3);
  store->Can.Item[1].DataId = "3000";
  store->Can.Item[1].TxDataId = "&H1FFFFFFF";
  store->Can.Item[3].DataId = "&H7FE";
  store->Can.Item[3].TxDataId = "none";
  auto screen = busScreen();
  pick(*screen, "CanDataIDType", "11 bit");
  EXPECT_EQ(text(*screen, "DataId"), "2047");
  EXPECT_EQ(text(*screen, "Pgn"), "");
  EXPECT_FALSE(screen->Priority.Usable());
  type(*screen, "DataId", "x");
  EXPECT_EQ(text(*screen, "DataId"), "2047") << "ignored";
  EXPECT_EQ(forms.beeps, 1);
  screen->Done();
  EXPECT_EQ(store->Can.Module[1].CanDataIDType, 0);
  EXPECT_EQ(store->Can.Item[1].DataId, "2047");
  EXPECT_EQ(store->Can.Item[1].TxDataId, "&H7FF");
  EXPECT_EQ(store->Can.Item[3].DataId, "&H7FE");
  EXPECT_EQ(store->Can.Item[3].TxDataId, "none") << "no number, left for the user";
}

TEST_F(CanScreens, ItemsComeAndGo) {
  giveItems(3);
  store->Can.Item[2].Name = "CANItem3";
  store->Can.Item[3].Alias[1].AliasName = "Third";
  auto screen = busScreen();
  press(*screen, "Add");
  EXPECT_EQ(text(*screen, "Item"), "4: CANItem4");
  pick(*screen, "Item", "1: Item1");
  const std::string question =
      "Are you sure you want to delete item number 1 for the selected CAN Module?";
  forms.ExpectBox("DELETE ITEM", question, Answer::kNo);
  press(*screen, "Delete");
  EXPECT_EQ(text(*screen, "CanCount"), "4");
  forms.ExpectBox("DELETE ITEM", question, Answer::kYes);
  press(*screen, "Delete");
  EXPECT_EQ(text(*screen, "Item"), "1: CANItem3");
  pick(*screen, "Item", "3: CANItem4");
  pick(*screen, "DataStyle", "2");
  forms.ExpectBoxWith("DELETE ITEM", "number 3", Answer::kYes);
  press(*screen, "Delete");
  EXPECT_EQ(text(*screen, "Item"), "2: Item3");
  press(*screen, "Add");
  EXPECT_EQ(text(*screen, "Item"), "3: CANItem4") << "a name that no other item has";
  EXPECT_EQ(text(*screen, "DataStyle"), "0") << "nothing is left of the item before";
  pick(*screen, "DataStyle", "1");
  screen->Done();
  EXPECT_EQ(store->Can.CanCount, 3);
  EXPECT_EQ(store->Can.Item[2].Alias[1].AliasName, "Third");
  EXPECT_EQ(store->Can.Item[4].Name, "");

  giveItems(kCanItems);
  EXPECT_FALSE(busScreen()->Add.Usable());
}

TEST_F(CanScreens, ARenamedItemKeepsItsLevelCrossings) {
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

TEST_F(CanScreens, OtherScreensEditTheItemShown) {
  giveItems(2);
  EXPECT_FALSE(busScreen()->FieldNames.Usable());
  EXPECT_FALSE(busScreen()->Outputs.Usable());
  CanHooks hooks;
  hooks.FieldNames = [](CanItemData& item, int number) {
    item.Alias[1].AliasName = "Alias" + NumberText(number);
    return true;
  };
  hooks.Outputs = [](CanItemData&, int) { return false; };
  auto screen = busScreen(hooks);
  pick(*screen, "Item", "2: Item2");
  press(*screen, "Outputs");
  screen->Cancel();
  EXPECT_EQ(screen->Result(), ModalResult::kCancel) << "nothing changed";
  press(*screen, "FieldNames");
  forms.ExpectBoxWith("MEASUREMENT BLOCKS", "", Answer::kYes);
  screen->Cancel();
  EXPECT_EQ(store->Can.Item[2].Alias[1].AliasName, "Alias2");
}

TEST_F(CanScreens, AdvancedOptionsTakeEffectAtDone) {
  store->Can.Module[1].CanNaNOldData = 1;
  auto screen = busScreen();
  host.next = {[](Screen& advanced) {
    advanced.Find("CanGetOSVerSig")->Check(true);
    advanced.Done();
  }};
  EXPECT_TRUE(open(*screen, "frmCanAdv"));
  screen->Done();
  EXPECT_EQ(store->Can.Module[1].CanNaNOldData, 1) << "as the project had it";
  EXPECT_EQ(store->Can.Module[1].CanGetOSVerSig, -1);
}

TEST_F(CanScreens, AnItemOfAListIsTakenOver) {
  files.files["/work/engine.29LST"] =
      "ORVUSV5\r\n" + std::string(kHeader) +
      ",TxDataID,TxDataFrame,RxDataMatch,RxTimeout\r\n"
      "\"Oil, hot\",6,0,0,254,202,3,2,9,16,OilTemp,0.5,-40,degC,5,&H0100000000000000,"
      "&HXXXXXXXXXXXXXX00,20\r\n"
      "\"&HNo name\",6,0,0,254,203,3,3,1,8,,1,0,,,,,\r\n";
  giveItems(2);
  store->Can.Item[1].Reps = 4;
  store->Can.Item[1].DataResolution = "FP2";
  auto screen = busScreen();
  host.next = {[&](Screen& list) {
                 forms.ExpectOpen("/work/engine.29LST");
                 press(list, "Open");
                 EXPECT_EQ(forms.dialog.title, "OPEN PICK LIST FILE");
                 EXPECT_EQ(forms.dialog.initialFolder, "/work/");
                 pick(list, "Items", "1: Oil, hot");
                 list.Done();
               },
               [&](Screen& list) {
                 EXPECT_EQ(text(list, "ListName"), "/work/engine.29LST") << "once more";
                 pick(list, "Items", "2: No name");
                 list.Done();
               },
               [&](Screen& list) {
                 pick(list, "Items", "1: Oil, hot");
                 list.Cancel();
               }};
  press(*screen, "Pick");
  pick(*screen, "Item", "2: Item2");
  EXPECT_TRUE(open(*screen, "frmCanPick"));
  EXPECT_TRUE(open(*screen, "frmCanPick"));
  screen->Done();
  const CanItemData& oil = store->Can.Item[1];
  EXPECT_EQ(told(oil),
            "OilTemp|Oil, hot|419351043|2|9|16|4|0.5|-40|degC|FP2|1|5|&H0100000000000000|"
            "&HXXXXXXXXXXXXXX00|20|")
      << "a list has no count of values and no resolution";
  const CanItemData& second = store->Can.Item[2];
  EXPECT_EQ(second.Name, "Item2");
  EXPECT_EQ(second.DataId, "&H18FECB03");
  EXPECT_EQ(second.ItemMessageType, 0);
}

class PickScreen : public CanScreens {
 protected:
  PickScreen() {
    present.Config.Description = "Present";
    present.J1939Fields = true;
    files.files["/work/a.29LST"] =
        "ORVUSV5\r\n" + std::string(kHeader) + "\r\n\"A\",1,0,0,0,0,0,1,1,1,A,1,0,\r\n";
  }
  std::unique_ptr<frmCanPick> pickScreen(std::string path = "/work/a.29LST") {
    return std::make_unique<frmCanPick>(
        context, frmCanPick::Subject{files, "/work/", present, std::move(path)});
  }
  void expectQuestion(Answer answer) {
    forms.ExpectBox("SAVE PICK LIST FILE",
                    "Edits have been made to the list of items.  Save changes to disk?", answer);
  }

  CanListItem present;
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
  EXPECT_EQ(copy->Path(), "/work/copy.29LST");
  copy->Cancel();
  EXPECT_EQ(copy->Result(), ModalResult::kCancel) << "no edits are left";
}

TEST_F(PickScreen, AListThatCanNotBeSavedStaysOpen) {
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

TEST_F(PickScreen, AListThatCanNotBeOpenedLeavesThePresentOne) {
  files.files["/work/b.11LST"] = "ORVUSV5\r\n" + std::string(kHeader) + "\r\n";
  files.files["/work/c.29PCK"] = "ORVUSV5\r\n" + std::string(kHeader) + "\r\nx\r\n";
  struct Case {
    std::string path, part;
  };
  const Case cases[] = {
      {"/work/b.11LST", "29 bits"},
      {"/work/c.29PCK", "An error occurred while reading the pick list.\r\nCheck Line Number : 3"},
  };
  auto screen = pickScreen();
  for (const Case& row : cases) {
    forms.ExpectOpen(row.path);
    forms.ExpectBoxWith("OPEN PICK LIST FILE", row.part);
    press(*screen, "Open");
    EXPECT_EQ(screen->Path(), "/work/a.29LST");
    EXPECT_EQ(screen->Items.Items.size(), 1U);
  }
  pickScreen("/work/gone.29LST");  // no box
  press(*screen, "New");
  EXPECT_TRUE(screen->Path().empty());
  screen->Done();
  EXPECT_FALSE(screen->Picked());
}

// A decimal identifier whose description looks like the mark of a hexadecimal one.
TEST_F(PickScreen, AProjectsItemReadsBackFromItsList) {
  giveItems(1);
  CanItemData& item = store->Can.Item[1];
  item.DataId = "2748";
  item.Description = "&Hello";
  auto screen = busScreen();
  host.next = {[&](Screen& list) {
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

TEST_F(CanScreens, AProjectThatIsOnlyLookedAtStaysAsItIs) {
  giveItems(1);
  // Values that no list of the screen holds.
  CanItemData& item = store->Can.Item[1];
  item.DataStyle = 19;
  item.ItemMessageType = 2;
  item.DataResolution = "LONG";
  item.Enabled = -1;
  item.Public = 1;
  item.DefaultMult = 1.23456789e-7F;
  item.RxTimeout = -5;
  item.DataId = "&hzz";
  store->Can.Module[1].CanBaud = 9;
  store->Can.Module[1].CanDataIDType = 3;
  store->Can.Module[1].CanBusEnabled = 1;
  const std::string before = project();
  auto screen = busScreen();
  for (Control* control : screen->Controls()) screen->MoveFocus(control);
  forms.ExpectBoxWith("CONTINUE WITH IMPROPER VALUES ?", "", Answer::kYes);
  screen->Done();
  EXPECT_EQ(project(), before);
}

}  // namespace
}  // namespace ostrand
