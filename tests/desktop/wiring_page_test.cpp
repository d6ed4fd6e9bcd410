// The pictures of the wiring and of the channels.
#include "pages/wiring_page.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QGraphicsItem>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QTest>
#include <array>
#include <cmath>

#include "desktop_session.h"
#include "documents/makewire.h"
#include "documents/wired_terminals.h"
#include "drawings/scene_style.h"
#include "drawings/wire_looks.h"
#include "model/channels.h"
#include "pages/channels_page.h"
#include "project_bytes.h"
#include "support/project_random.h"
#include "support/temp_folder.h"
#include "texts.h"

namespace ostrand {
namespace {

using desktop::TerminalItem;
using testing::WiredTerminal;

// The terminals of the diagram by connector, from top to bottom.
using Connectors = std::array<std::vector<WiredTerminal>, 4>;
Connectors connectorsOf(std::string_view diagram) {
  Connectors connectors;
  std::size_t page = 0;
  for (const std::string& line : testing::DiagramLines(diagram)) {
    if (line.find(" Page Break ") != std::string::npos) page = 2;
    if (line.size() != 77 || line[0] != '\xB3' || line[38] != '|') continue;
    for (const std::size_t side : {0U, 1U}) {
      const std::size_t start = side == 0 ? 1 : 40;
      const std::string mark = line.substr(start + 26, 2);
      if (mark == "  ") continue;
      connectors[page + side].push_back({testing::WithoutBlanks(line.substr(start, 26)), mark,
                                         testing::WithoutBlanks(line.substr(start + 28, 8))});
    }
  }
  return connectors;
}

class Pictures : public testing::PageTest {
 protected:
  Wiring wiring() {
    return WiringOf(store(), desktop::ProgramOf(session_.control, store()).channels);
  }
};

TEST_F(Pictures, WiringShowsTheTerminalsOfTheDiagram) {
  desktop::WiringScene scene;
  int wired = 0;
  for (std::uint32_t seed = 1; seed <= 500; ++seed) {
    SCOPED_TRACE(seed);
    testing::MakeRandomProject(store(), seed);
    const StatementChannels channels = desktop::ProgramOf(session_.control, store()).channels;
    scene.Show(WiringOf(store(), channels), store(), desktop::PaperPalette());
    const Connectors diagram = connectorsOf(WiringText(store(), channels, {"PUMP", {}}));
    std::array<std::size_t, 4> next{};
    for (const TerminalItem* item : scene.Terminals()) {
      const auto strip = static_cast<std::size_t>(item->Strip());
      if (strip >= diagram.size()) continue;  // an input of a multiplexer
      ASSERT_LT(next[strip], diagram[strip].size());
      const WiredTerminal& printed = diagram[strip][next[strip]++];
      const WireTerminal& terminal = item->Terminal();
      ASSERT_EQ(TerminalText(terminal), printed.cell);
      ASSERT_EQ(terminal.users.empty(), printed.mark == " O") << printed.cell;
      if (terminal.users.empty()) continue;
      ++wired;
      const WireUse& use = terminal.users.front();
      EXPECT_EQ(testing::WithoutBlanks(use.label), printed.label) << printed.cell;
      const QString source = desktop::FromProject(use.source);
      EXPECT_TRUE(desktop::FromProject(use.label).contains(source)) << printed.cell;
      EXPECT_TRUE(item->toolTip().contains(desktop::UserText(use))) << printed.cell;
    }
    for (const std::size_t strip : {0U, 1U, 2U, 3U}) {
      EXPECT_EQ(next[strip], diagram[strip].size());
    }
  }
  EXPECT_GT(wired, 5000);
}

// The colour at the letter of each terminal is that of its kind.
TEST_F(Pictures, WiringPaintsEachUserInItsColour) {
  desktop::WiringScene scene;
  for (std::uint32_t seed = 1; seed <= 12; ++seed) {
    testing::MakeRandomProject(store(), seed);
    scene.Show(wiring(), store(), desktop::PaperPalette());
    QImage image(scene.sceneRect().size().toSize(), QImage::Format_RGB32);
    QPainter painter(&image);
    scene.render(&painter, image.rect(), scene.sceneRect());
    painter.end();
    for (const TerminalItem* item : scene.Terminals()) {
      const WireUses& users = item->Terminal().users;
      const QPointF corner = item->pos() + QPointF(4, 4) - scene.sceneRect().topLeft();
      const QColor painted = image.pixelColor(corner.toPoint());
      const QColor expected = users.empty() ? desktop::PaperPalette().color(QPalette::AlternateBase)
                                            : QColor(desktop::LookOf(users.front().kind).color);
      EXPECT_EQ(painted.name(), expected.name()) << seed << ' ' << TerminalText(item->Terminal());
    }
  }
}

// Two blocks of two single-ended voltages, the second one on the last input of the first.
TEST_F(Pictures, WiringShowsConflicts) {
  store().Config.AutoChan = kFalse;
  store().VoltBlock.BlockCount = 2;
  for (const int n : {1, 2}) {
    store().VoltBlock[n].Reps = 2;
    store().VoltBlock[n].MeasType = "SE";
    store().VoltBlock[n].StartChan = static_cast<i16>(n);
  }
  desktop::WiringPage page(open_, nullptr);
  page.Show(session_.control, store());
  EXPECT_EQ(page.Conflicts()->text(), "Conflict: a terminal has several users.");
  const auto& terminals = page.View()->Picture().Terminals();
  EXPECT_TRUE(terminals[1]->toolTip().contains("Conflict"));
  EXPECT_TRUE(terminals[1]->toolTip().contains("Voltage block 1, sensor 2"));
  EXPECT_FALSE(terminals[0]->toolTip().contains("Conflict"));
  store().VoltBlock[2].StartChan = 3;
  page.Show(session_.control, store());
  EXPECT_EQ(page.Conflicts()->text(), "");
}

// Each kind of user at its terminal: the words of the tip, and the screen that a click opens.
TEST_F(Pictures, WiringExplainsAndOpensEveryKind) {
  store().Config.AutoChan = kTrue;
  store().Config.TK40MQty = 1;
  store().Config.CanBusQty = 1;
  store().TempBlock.BlockCount = store().BridgeBlock.BlockCount = 1;
  store().TempBlock[1].Reps = store().BridgeBlock[1].Reps = 1;
  store().TempBlock[1].MeasType = store().BridgeBlock[1].MeasType = "Diff";
  store().TempBlock[1].TypeNo = ORVUS_TCTYPE_K;
  store().TempBlock[1].Alias[1].AliasName = "Oil";
  store().BridgeBlock[1].Style = 1;
  store().BridgeBlock[1].ExciteReps = 1;
  store().BridgeBlock[1].Excite = 5000;
  store().PulseBlock[1].BlockCount = store().PulseBlock[1][1].Reps = 1;
  store().PulseBlock[1][1].Meas = "HiLev";
  store().TK40MBlock.BlockCount = store().TK40MBlock[1].Reps = 1;
  store().TK40MBlock[1].Range = "50 mV";
  store().ExciteOut.Slot[1][2].Include = kTrue;
  store().PulseBlock[1][1].Opt = 0;
  store().Ports.Slot[0].ByteMode = kFalse;
  store().Ports.Slot[0].Ports[1].Include = kTrue;
  struct Case {
    int strip;
    const char* name;
    const char* words;
    const char* screen;
    const char* which;
  };
  const Case cases[] = {
      {0, "01 01 H", "Thermocouple block 1, sensor 1: Oil", "frmTempSetup", "1"},
      {0, "03 06 L", "low wire (L) of the output", "frmBrdgSetup", "1"},
      {0, "02 03 H", "of the excitation sensed", "frmBrdgSetup", "1"},
      {2, "VX1", "Excitation: 5000 mV on VX", "frmBrdgSetup", "1"},
      {2, "P1", "HiLev, counts", "frmPulseSetup", "1"},
      {2, "CAO2", "Analog output 2", "frmExcite", ""},
      {2, "C1", "Control port 1", "frmPorts", ""},
      {3, "C7", "Wire: clock", "frmConfig", ""},
      {1, "20 39 H", "Multiplexer 1", "frmConfig", ""},
      {1, "Gnd", "CAN module", "frmConfig", ""},
      {4, "01 HL", "Multiplexer block 1, sensor 1", "frmTK40MSetup", "1"},
  };
  desktop::WiringPage page(open_, nullptr);
  page.Show(session_.control, store());
  show(page);
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    const TerminalItem* found = nullptr;
    for (const TerminalItem* item : page.View()->Picture().Terminals()) {
      const bool matches = item->Strip() == row.strip && TerminalText(item->Terminal()) == row.name;
      if (matches && !item->Terminal().users.empty()) found = item;
    }
    ASSERT_NE(found, nullptr);
    EXPECT_TRUE(found->toolTip().contains(QString::fromLatin1(row.words)))
        << row.words << " not in " << found->toolTip().toStdString();
    page.View()->centerOn(found);
    opened_.clear();
    QTest::mouseClick(page.View()->viewport(), Qt::LeftButton, {},
                      page.View()->mapFromScene(found->sceneBoundingRect().center()));
    ASSERT_EQ(opened_.size(), 1U);
    EXPECT_EQ(opened_.front().steps.back().screen, row.screen);
    EXPECT_EQ(opened_.front().steps.back().which, row.which);
    EXPECT_EQ(page.Explanation()->text(), found->toolTip().replace("\n", "; "));
  }
}

TEST_F(Pictures, WiringIsWalkedByKeys) {
  open("engine-test-cell");
  desktop::WiringPage page(open_, nullptr);
  page.Show(session_.control, store());
  show(page);
  desktop::WiringView& view = *page.View();
  const auto press = [&](std::initializer_list<Qt::Key> keys) {
    for (const Qt::Key key : keys) QTest::keyClick(&view, key);
    return page.Explanation()->text().section(u';', 0, 0).section(u':', 0, 0);
  };
  EXPECT_EQ(press({Qt::Key_Down}), "Differential channel 1, single-ended channel 1, H");
  EXPECT_EQ(press({Qt::Key_Down, Qt::Key_Down}), "Terminal Gnd");
  EXPECT_EQ(press({Qt::Key_Up}), "Differential channel 1, single-ended channel 2, L");
  EXPECT_EQ(press({Qt::Key_Right}), "Differential channel 11, single-ended channel 22, L");
  // There is no terminal beside the second one of the left strip, the nearest one is below.
  EXPECT_EQ(press({Qt::Key_Right, Qt::Key_Right}), "Terminal C5");
  page.Show(session_.control, store());
  EXPECT_EQ(press({Qt::Key_Right, Qt::Key_Left, Qt::Key_Left}),
            "Differential channel 11, single-ended channel 22, L");
  press({Qt::Key_Return});
  ASSERT_EQ(opened_.size(), 1U);
  EXPECT_EQ(opened_.front().steps.back().screen, "frmVoltSetup");
}

TEST_F(Pictures, ViewsZoomAndDragsOpenNothing) {
  open("engine-test-cell");
  desktop::WiringPage page(open_, nullptr);
  page.Show(session_.control, store());
  show(page);
  desktop::WiringView& view = *page.View();
  view.UsualSize();
  const qreal usual = view.Scale();
  QTest::keyClick(&view, Qt::Key_Plus);
  EXPECT_NEAR(view.Scale(), usual * 1.25, 1e-6);
  view.Fit();
  EXPECT_TRUE(QRectF(view.viewport()->rect())
                  .adjusted(-2, -2, 2, 2)
                  .contains(view.mapFromScene(view.sceneRect()).boundingRect()));
  view.UsualSize();
  EXPECT_EQ(view.Scale(), usual);
  for (int times = 0; times < 50; ++times) QTest::keyClick(&view, Qt::Key_Minus);
  EXPECT_GT(view.Scale(), 0.19);
  view.UsualSize();
  const QPoint from =
      view.mapFromScene(view.Picture().Terminals()[3]->sceneBoundingRect().center());
  QTest::mousePress(view.viewport(), Qt::LeftButton, {}, from);
  QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, from + QPoint(0, 22));
  EXPECT_TRUE(opened_.empty());
}

TEST_F(Pictures, ViewsAreAsWideAsTheWindowUntilTheUserZooms) {
  desktop::ChannelsPage page(open_, nullptr);
  page.Show(session_.control, store());
  show(page);
  desktop::ChannelsView& view = *page.View();
  const qreal usual = view.Scale();
  page.resize(600, 600);
  EXPECT_LT(view.Scale(), usual);
  page.resize(300, 600);
  EXPECT_GE(view.Scale(), 0.64 * usual) << "can still be read";
  view.Zoom(2);
  const qreal zoomed = view.Scale();
  page.resize(800, 600);
  page.Show(session_.control, store());
  EXPECT_EQ(view.Scale(), zoomed);
}

// ---- Channels -----------------------------------------------------------------------------------

// The chart of inputs has every input once: free, or of the users that the wiring has. The shares
// of the scan are the longest first and sum to the estimate.
TEST_F(Pictures, ChannelsAccountForEveryInputAndTheWholeScan) {
  for (std::uint32_t seed = 1; seed <= 50; ++seed) {
    SCOPED_TRACE(seed);
    testing::MakeRandomProject(store(), seed);
    const Wiring made = wiring();
    const desktop::InputUse use = desktop::InputUseOf(made);
    std::map<int, int> users;
    for (const desktop::InputUser& user : use.users) {
      for (const desktop::InputRun& run : user.runs) {
        for (int input = run.first; input <= run.last; ++input) ++users[input];
      }
    }
    for (const desktop::InputRun& run : use.free) {
      for (int input = run.first; input <= run.last; ++input) EXPECT_EQ(users.count(input), 0U);
    }
    const desktop::InputCount free = desktop::CountOf(use.free);
    EXPECT_EQ(free.singleEnded + static_cast<int>(users.size()), PanelSEChans);
    int pairs = 0;  // whole differential channels
    for (int channel = 1; channel <= PanelSEChans / 2; ++channel) {
      pairs += users.contains(2 * channel - 1) || users.contains(2 * channel) ? 0 : 1;
    }
    EXPECT_EQ(free.differential, pairs);
    std::int64_t sum = 0;
    i32 last = std::numeric_limits<i32>::max();
    for (const ScanShare& share : desktop::LongestFirst(store())) {
      EXPECT_LE(share.micros, last);
      last = share.micros;
      sum += share.micros;
    }
    EXPECT_EQ(std::min<std::int64_t>(sum, std::numeric_limits<i32>::max()),
              ORVUS_COMMON::EstMeasTime(store()));
    std::size_t shared = 0;
    for (const auto& [input, count] : users) shared += count > 1 ? 1 : 0;
    EXPECT_EQ(static_cast<std::size_t>(desktop::CountOf(use.conflicts).singleEnded), shared);
  }
}

TEST_F(Pictures, ChannelsSayWhatTheyDrawAndOpenTheirBlocks) {
  open("thermal-survey");
  desktop::ChannelsPage page(open_, nullptr);
  page.Show(session_.control, store());
  const QString words = page.View()->Picture().Words();
  for (const char* line :
       {"All measurements: 130,630 \xB5s 2.6 %",
        "The scan interval is 5,000,000 \xB5s, at the thick line.",
        "Voltage block 1: 67,480 \xB5s 1.3 %", "Thermocouple block 1: inputs 1 to 3",
        "Free: inputs 4, 9 to 34", "Multiplexer 3: inputs 35 to 36", "VX4: TK40M Excitation",
        "C2: Port Set 2", "C3: free", "TK40M 3: 7 free"}) {
    EXPECT_TRUE(words.split(u'\n').contains(QString::fromLatin1(line))) << line << " not in\n"
                                                                        << words.toStdString();
  }
  EXPECT_FALSE(words.contains("LONGER"));
  EXPECT_EQ(page.View()->accessibleDescription(), words);
  store().Scan.ExecutionTime = 130;
  store().Scan.ExecTimeUnits = 1;
  page.Show(session_.control, store());
  EXPECT_TRUE(page.View()->Picture().Words().contains("THE MEASUREMENTS TAKE LONGER"));

  show(page);
  desktop::ChannelsView& view = *page.View();
  const QGraphicsItem* longest = nullptr;
  for (const QGraphicsItem* item : view.items()) {
    if (!item->toolTip().startsWith("Multiplexer block 3:")) continue;
    const qreal width = longest == nullptr ? 0 : longest->boundingRect().width();
    if (item->boundingRect().width() > width) longest = item;  // not its part of the whole
  }
  ASSERT_NE(longest, nullptr);
  view.centerOn(longest);
  QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                    view.mapFromScene(longest->sceneBoundingRect().center()));
  ASSERT_EQ(opened_.size(), 1U);
  EXPECT_EQ(opened_.front().steps.back().screen, "frmTK40MSetup");
  EXPECT_EQ(opened_.front().steps.back().which, "3");
}

// ---- Colours ------------------------------------------------------------------------------------

using Vector = std::array<double, 3>;

double linear(int channel) {
  const double c = channel / 255.0;
  return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

// Machado and others (2009), full severity: normal, protan, deutan, tritan.
using Matrix = std::array<Vector, 3>;
constexpr std::array<Matrix, 4> kEyes = {{
    {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
    {{{0.152286, 1.052583, -0.204868},
      {0.114503, 0.786281, 0.099216},
      {-0.003882, -0.048116, 1.051998}}},
    {{{0.367322, 0.860646, -0.227968},
      {0.280085, 0.672501, 0.047413},
      {-0.011820, 0.042940, 0.968881}}},
    {{{1.255528, -0.076749, -0.178779},
      {-0.078411, 0.930809, 0.147602},
      {0.004733, 0.691367, 0.303900}}},
}};

// CIE L*a*b* of a colour as such an eye sees it.
Vector labOf(const QColor& color, const Matrix& eye) {
  const Vector rgb = {linear(color.red()), linear(color.green()), linear(color.blue())};
  Vector seen{};
  for (std::size_t i = 0; i < 3; ++i) {
    seen[i] = std::clamp(eye[i][0] * rgb[0] + eye[i][1] * rgb[1] + eye[i][2] * rgb[2], 0.0, 1.0);
  }
  const auto f = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116; };
  const double x = f((0.4124 * seen[0] + 0.3576 * seen[1] + 0.1805 * seen[2]) / 0.9505);
  const double y = f(0.2126 * seen[0] + 0.7152 * seen[1] + 0.0722 * seen[2]);
  const double z = f((0.0193 * seen[0] + 0.1192 * seen[1] + 0.9505 * seen[2]) / 1.089);
  return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

TEST(WireLooks, ColorsDifferToEveryEye) {
  constexpr double kClearlyDifferent = 20;
  constexpr double kMinContrast = 4.5;
  for (const desktop::WireLook& one : desktop::WireLooks()) {
    EXPECT_EQ(&desktop::LookOf(one.kind), &one);
    const QColor color(one.color);
    const double luminance = 0.2126 * linear(color.red()) + 0.7152 * linear(color.green()) +
                             0.0722 * linear(color.blue());
    EXPECT_GE((luminance + 0.05) / 0.05, kMinContrast) << one.name;
    for (const desktop::WireLook& other : desktop::WireLooks()) {
      if (&one == &other) continue;
      EXPECT_NE(one.letter, other.letter);
      for (const Matrix& eye : kEyes) {
        const Vector a = labOf(color, eye);
        const Vector b = labOf(QColor(other.color), eye);
        EXPECT_GT(std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]), kClearlyDifferent)
            << one.name << " and " << other.name;
      }
    }
  }
}

}  // namespace
}  // namespace ostrand
