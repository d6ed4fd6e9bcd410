// Programs beside the session and the other end of a connection.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>
#include <utility>

#include "platform/posix/posix_filesystem.h"
#include "platform/posix/posix_process.h"
#include "platform/posix/posix_socket.h"
#include "support/temp_folder.h"

namespace ostrand::platform {
namespace {

using testing::ReadDisk;
using testing::TempFolder;

void rest() { std::this_thread::sleep_for(std::chrono::milliseconds(1)); }

// Waits, as long as a test may take, until `reached`.
template <class Reached>
bool soon(Reached&& reached) {
  for (int round = 0; round < 20000 && !reached(); ++round) rest();
  return reached();
}

// ---- Processes ----------------------------------------------------------------------------------

TEST(PosixProcess, WordsArriveAsTheyAreAndWithoutAShell) {
  const TempFolder folder;
  const std::string odd = folder / "it's a \"$HOME\" `id` ; * \\ \xE9";
  PosixProcesses processes;
  auto process = processes.Start({{"/usr/bin/touch", odd}, "unused"});
  ASSERT_TRUE(process);
  EXPECT_TRUE(soon([&] { return !process.Value()->Running(); }));
  process.Value()->End();
  EXPECT_FALSE(process.Value()->Running());
  EXPECT_EQ(std::filesystem::directory_iterator(folder.Path())->path(), odd);
}

TEST(PosixProcess, ItsEndEndsWhatItStarted) {
  const TempFolder folder;
  const std::string pids = folder / "pids";
  PosixProcesses processes;
  auto process = processes.Start(
      {{"/bin/sh", "-c", "sleep 1000 & echo $! $$ > \"$0\"; wait", pids}, "unused"});
  ASSERT_TRUE(process);
  PosixFileSystem files;
  ASSERT_TRUE(soon([&] { return files.Size(pids) > 0; }));
  EXPECT_TRUE(process.Value()->Running());
  process.Value().reset();
  const std::string both = ReadDisk(pids);
  const std::size_t blank = both.find(' ');
  for (const std::string& pid : {both.substr(0, blank), both.substr(blank + 1)}) {
    const std::string stat = "/proc/" + pid.substr(0, pid.find('\n')) + "/stat";
    // Gone, or dead and not yet collected by the system.
    EXPECT_TRUE(soon([&] {
      const auto line = files.Read(stat);
      return !line || line.Value().find(") Z ") != std::string::npos;
    })) << stat;
  }
}

TEST(PosixProcess, AProgramThatCannotBeStartedIsNamed) {
  const TempFolder folder;
  PosixProcesses processes;
  const auto none = processes.Start({{folder / "none"}, ""});
  ASSERT_FALSE(none);
  EXPECT_EQ(none.ErrorText(), (folder / "none") + ": No such file or directory");
  testing::WriteDisk(folder / "text", "no program");
  const auto text = processes.Start({{folder / "text"}, ""});
  ASSERT_FALSE(text);
  EXPECT_EQ(text.ErrorText(), (folder / "text") + ": Permission denied");
}

// ---- Connections --------------------------------------------------------------------------------

class TcpSocketTest : public ::testing::Test {
 protected:
  void SetUp() override {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* plain = reinterpret_cast<sockaddr*>(&address);
    socklen_t size = sizeof address;
    ASSERT_EQ(::bind(listener_, plain, size), 0);
    ASSERT_EQ(::listen(listener_, 1), 0);
    ASSERT_EQ(::getsockname(listener_, plain, &size), 0);
    port_ = std::to_string(ntohs(address.sin_port));
  }
  void TearDown() override { ::close(listener_); }

  int listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
  std::string port_;
};

TEST_F(TcpSocketTest, SendsEveryByteOfALongMessage) {
  auto socket = TcpSocket::Connect("127.0.0.1", port_);
  ASSERT_TRUE(socket);
  const int peer = ::accept(listener_, nullptr, nullptr);
  std::string bytes(3'000'001, '\0');
  for (std::size_t at = 0; at < bytes.size(); ++at) bytes[at] = static_cast<char>(at * 31 % 256);
  std::string got;
  std::thread reader([&] {
    std::string part(1 << 16, '\0');
    for (ssize_t count = 1; count > 0;) {
      count = ::read(peer, part.data(), part.size());
      if (count > 0) got.append(part, 0, static_cast<std::size_t>(count));
    }
  });
  EXPECT_TRUE(socket.Value()->SendData(bytes));
  socket.Value().reset();
  reader.join();
  ::close(peer);
  EXPECT_TRUE(got == bytes) << got.size();
}

TEST_F(TcpSocketTest, APeerThatIsGoneIsToldAtTheNextMessage) {
  auto socket = TcpSocket::Connect("127.0.0.1", port_);
  ASSERT_TRUE(socket);
  ::close(::accept(listener_, nullptr, nullptr));
  Result<> sent = Done{};
  EXPECT_TRUE(soon([&] {
    sent = socket.Value()->SendData("hello");
    return !sent;
  }));
  EXPECT_EQ(sent.ErrorText(), "127.0.0.1:" + port_ + ": the other side has closed the connection");
}

TEST_F(TcpSocketTest, NobodyThereIsToldWithTheAddress) {
  ::close(std::exchange(listener_, -1));
  const auto refused = TcpSocket::Connect("127.0.0.1", port_);
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.ErrorText(), "127.0.0.1:" + port_ + ": Connection refused");
  const auto wrong = TcpSocket::Connect("127.0.0.1", "no-such-service");
  ASSERT_FALSE(wrong);
  EXPECT_TRUE(wrong.ErrorText().starts_with("127.0.0.1:no-such-service: "));
}

}  // namespace
}  // namespace ostrand::platform
