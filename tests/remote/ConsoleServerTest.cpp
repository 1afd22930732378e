#include "zephyr/console/remote/ConsoleServer.h"

#include "ServerFixture.h"
#include "support/ScriptedCommand.h"
#include "zephyr/console/EndOfRun.h"
#include "zephyr/console/commands/Command.h"
#include "zephyr/console/commands/Failure.h"
#include "zephyr/console/commands/StandardCommands.h"

#include <memory>
#include <optional>
#include <stdexcept>
#include <thread>

#include <malloc.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace zephyr::console::remote {
namespace {

using Texts = std::vector<std::string>;

constexpr char kUnknown[] = "'nothing' is not a recognized command.  Type 'help' to list available commands.";

class ConsoleServerTest : public ServerFixture
{
protected:
    ConsoleServerTest()
    {
        commands::addEcho(console);
        server.emplace(console, "sandbox");
    }

    std::optional<ConsoleServer> server;
};

TEST_F(ConsoleServerTest, SaysFirstWhoItIs)
{
    ASSERT_TRUE(server->isListening()) << server->error().toStdString();
    EXPECT_EQ("sandbox", server->name());
    PlainClient client("sandbox");
    EXPECT_EQ(Message(HelloMessage{1, "sandbox", QCoreApplication::applicationPid(), 2}), client.next());
    EXPECT_EQ(1u, server->clientCount());
}

TEST_F(ConsoleServerTest, RunsLinesAndSendsWhatTheyWrite)
{
    PlainClient client("sandbox");
    client.next();
    client.send(RunRequest{7, "echo hello"});
    const std::vector<Message> expected{EntryMessage{7, {2, Entry::Type::Input, "echo hello"}},
                                        EntryMessage{7, {3, Entry::Type::Output, "    hello"}},
                                        EntryMessage{7, {4, Entry::Type::Output, ""}},
                                        DoneMessage{7, Outcome::Ok, ""}};
    EXPECT_EQ(expected, client.until(7));
    EXPECT_TRUE(console.history().empty());
}

TEST_F(ConsoleServerTest, TellsHowALineEnded)
{
    commands::add(console, U"brake", U"Brakes.", [] { commands::fail(U"No brakes."); });
    test::addCommand(console, U"throw").onExecute = [](const auto&, Console&) {
        throw std::runtime_error("oh");
    };
    test::addCommand(console, U"stop").onExecute = [](const auto&, Console&) { throw EndOfRun(); };
    console.execute(U"alias both \"echo a;nothing b\"");
    PlainClient client("sandbox");
    client.next();
    EXPECT_EQ((Texts{">> nothing a", kUnknown, "", std::string("unknown: ") + kUnknown}),
              client.run("nothing a"));
    EXPECT_EQ("failed: No brakes.", client.run("brake").back());
    EXPECT_EQ((Texts{">> throw", "The console caught an exception: oh",
                     "failed: The console caught an exception: oh"}),
              client.run("throw"));
    EXPECT_EQ((Texts{">> stop", "ok"}), client.run("stop"));
    EXPECT_EQ(std::string("unknown: ") + kUnknown, client.run("both").back()) << "a line of an alias";
    EXPECT_EQ((Texts{">> ", "ok"}), client.run(""));
    EXPECT_EQ("ok", client
                        .run(QString("echo ") + "'nothing'" +
                             " is not a recognized command.  Type 'help' to list available commands.")
                        .back());
}

TEST_F(ConsoleServerTest, EndsAnAliasThatLeadsBackToItself)
{
    console.execute(U"alias again \"again\"");
    PlainClient client("sandbox");
    client.next();
    EXPECT_EQ(0u, client.run("again").back().find("failed: "));
    EXPECT_EQ("ok", client.run("echo still here").back());
}

TEST_F(ConsoleServerTest, CompletesLines)
{
    test::addCompletingCommand(console, U"wind", {U"set", U"show"});
    console.execute(U"alias windy \"wind\"");
    PlainClient client("sandbox");
    client.next();
    client.send(CompleteRequest{1, "wi"});
    EXPECT_EQ(Message(CandidatesMessage{1, {"wind", "windy"}, 0}), client.next());
    client.send(CompleteRequest{2, "wind s"});
    EXPECT_EQ(Message(CandidatesMessage{2, {"set", "show"}, 5}), client.next());
    client.send(CompleteRequest{3, "nothing s"});
    EXPECT_EQ(Message(CandidatesMessage{3, {}, 8}), client.next());
}

TEST_F(ConsoleServerTest, SendsTheWholeLogAsItGrowsToThoseWhoFollowIt)
{
    PlainClient client("sandbox");
    client.next();
    client.send(FollowRequest{1, true, 0});
    EXPECT_EQ(Message(DoneMessage{1, Outcome::Ok, ""}), client.next());
    EXPECT_EQ(0, std::get<EntryMessage>(client.next()).entry.index);
    EXPECT_EQ(1, std::get<EntryMessage>(client.next()).entry.index);
    console.write(U"from the program", Output);
    EXPECT_EQ(Message(EntryMessage{std::nullopt, {2, Entry::Type::Output, "from the program"}}),
              client.next());
    std::thread([&] { console.write(U"from a thread", Output); }).join();
    EXPECT_EQ(Message(EntryMessage{std::nullopt, {3, Entry::Type::Output, "from a thread"}}), client.next());
    EXPECT_EQ((Texts{">> echo a", "    a", "", "ok"}), client.run("echo a"))
        << "each entry once, then the end";
    client.send(FollowRequest{9, false, std::nullopt});
    EXPECT_EQ(Message(DoneMessage{9, Outcome::Ok, ""}), client.next());
    console.write(U"unseen", Output);
    EXPECT_EQ((Texts{">> echo b", "    b", "", "ok"}), client.run("echo b"));
}

TEST_F(ConsoleServerTest, SendsEntriesWhileTheLineRuns)
{
    PlainClient client("sandbox");
    client.next();
    bool wasSent = false;
    test::addCommand(console, U"slow").onExecute = [&](const auto&, Console& running) {
        running.write(U"begun", Output);
        wasSent = client.socket.waitForReadyRead(10000);
    };
    EXPECT_EQ((Texts{">> slow", "begun", "", "ok"}), client.run("slow"));
    EXPECT_TRUE(wasSent);
}

TEST_F(ConsoleServerTest, LetsClientsTakeTurnsAndKeepsTheOrderOfEach)
{
    constexpr int kClients = 8;
    constexpr int kLines = 50;
    std::vector<std::unique_ptr<PlainClient>> clients;
    for (int i = 0; i < kClients; ++i) {
        clients.push_back(std::make_unique<PlainClient>("sandbox"));
        clients.back()->next();
    }
    for (int line = 0; line < kLines; ++line) {
        for (int i = 0; i < kClients; ++i) {
            clients[static_cast<std::size_t>(i)]->send(
                RunRequest{line, QString("echo %1 %2").arg(i).arg(line)});
        }
    }
    for (int i = 0; i < kClients; ++i) {
        for (int line = 0; line < kLines; ++line) {
            const Texts texts = PlainClient::textsOf(clients[static_cast<std::size_t>(i)]->until(line));
            ASSERT_EQ(4u, texts.size());
            EXPECT_EQ("    " + std::to_string(i) + ' ' + std::to_string(line), texts[1]);
        }
    }
    EXPECT_EQ(2u + 3 * kClients * kLines, console.logSize());
}

TEST_F(ConsoleServerTest, RunsNoLineInsideOfAnother)
{
    PlainClient first("sandbox");
    PlainClient second("sandbox");
    first.next();
    second.next();
    int depth = 0;
    int deepest = 0;
    test::addCommand(console, U"dialog").onExecute = [&](const auto&, Console&) {
        deepest = std::max(deepest, ++depth);
        second.send(RunRequest{1, "dialog"});
        second.send(RunRequest{2, "echo later"});
        second.socket.flush();
        for (int i = 0; i < 20; ++i) { // as a modal dialog does
            QCoreApplication::processEvents();
        }
        --depth;
    };
    first.send(RunRequest{1, "dialog"});
    first.until(1);
    second.until(2);
    EXPECT_EQ(1, deepest);
    console.execute(U"dialog"); // the program's own line
    EXPECT_EQ(1, deepest);
    EXPECT_EQ("ok", PlainClient::textsOf(second.until(2)).back());
}

TEST_F(ConsoleServerTest, MayBeDestroyedByALineOfAClient)
{
    PlainClient client("sandbox");
    client.next();
    test::addCommand(console, U"unserve").onExecute = [&](const auto&, Console&) { server.reset(); };
    const Texts texts = client.run("unserve");
    EXPECT_EQ(">> unserve", texts.front());
    EXPECT_TRUE(texts.back() == "error: none" || texts.back() == "ok") << texts.back();
    EXPECT_EQ(0, filesOfServers());
}

TEST_F(ConsoleServerTest, SendsTheEndOfALineThatEndsTheProgram)
{
    PlainClient client("sandbox");
    client.next();
    test::addCommand(console, U"quit").onExecute = [&](const auto&, Console&) {
        QMetaObject::invokeMethod(&client.socket, [&] { server.reset(); }, Qt::QueuedConnection);
        throw EndOfRun();
    };
    EXPECT_EQ((Texts{">> quit", "ok"}), client.run("quit"));
    EXPECT_EQ(Message(ErrorMessage{"none"}), client.next());
}

TEST_F(ConsoleServerTest, ForgetsClientsThatGo)
{
    std::optional<PlainClient> client("sandbox");
    client->next();
    client->send(FollowRequest{1, true, 0});
    client->until(1);
    client.reset();
    EXPECT_TRUE(waitUntil([&] { return server->clientCount() == 0; }));
    console.write(U"to nobody", Output);
    QCoreApplication::processEvents();
}

TEST_F(ConsoleServerTest, ForgetsAClientThatGoesWhileItsLineRuns)
{
    std::optional<PlainClient> client("sandbox");
    client->next();
    bool hasRun = false;
    test::addCommand(console, U"long").onExecute = [&](const auto&, Console& running) {
        client.reset();
        for (int i = 0; i < 1000; ++i) {
            running.write(U"to nobody", Output);
            QCoreApplication::processEvents();
        }
        hasRun = true;
    };
    client->send(RunRequest{1, "long"});
    client->send(RunRequest{2, "echo never"});
    EXPECT_TRUE(waitUntil([&] { return hasRun && server->clientCount() == 0; }));
    EXPECT_EQ(U"", lastLine());
    PlainClient other("sandbox");
    other.next();
    EXPECT_EQ("ok", other.run("echo a").back());
}

TEST_F(ConsoleServerTest, KeepsLittleForAClientThatDoesNotRead)
{
    PlainClient silent("sandbox");
    silent.next();
    silent.socket.setReadBufferSize(1);
    silent.send(FollowRequest{1, true, 0});
    PlainClient other("sandbox");
    other.next();
    other.run("echo a");
    const std::u32string line(10000, U'x');
    for (int i = 0; i < 2000; ++i) {
        console.write(line, Output); // 20 MB to be sent
        QCoreApplication::processEvents();
    }
    EXPECT_EQ("ok", other.run("echo b").back());
    silent.socket.setReadBufferSize(0);
    const std::size_t size = console.logSize();
    std::size_t entries = 0;
    while (entries < size) {
        const Message message = silent.next();
        if (const auto* const entry = std::get_if<EntryMessage>(&message)) {
            ASSERT_EQ(static_cast<qint64>(entries), entry->entry.index);
            ++entries;
        } else {
            ASSERT_TRUE(std::holds_alternative<DoneMessage>(message));
        }
    }
}

TEST_F(ConsoleServerTest, TakesNoMemoryForAClientThatDoesNotRead)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the allocator is the sanitizer's";
#endif
    const std::u32string line(10000, U'x');
    const auto growth = [&] { // while 20 MB are written that are to be sent
        const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        for (int i = 0; i < 2000; ++i) {
            console.write(line, Output);
            QCoreApplication::processEvents();
        }
        return mallinfo2().uordblks + mallinfo2().hblkhd - before;
    };
    growth(); // so that both have a log that is to grow as much
    const std::size_t alone = growth();
    PlainClient silent("sandbox");
    silent.next();
    silent.socket.setReadBufferSize(1);
    silent.send(FollowRequest{1, true, 0});
    silent.socket.flush();
    waitUntil([&] { return silent.socket.bytesAvailable() > 0; });
    const std::size_t served = growth();
    EXPECT_LT(served, alone + 4'000'000);
}

TEST_F(ConsoleServerTest, HoldsALineUpForNoClientThatFollows)
{
    std::vector<std::unique_ptr<PlainClient>> followers;
    for (int i = 0; i < 20; ++i) {
        followers.push_back(std::make_unique<PlainClient>("sandbox"));
        followers.back()->next();
        followers.back()->send(FollowRequest{1, true, std::nullopt});
        followers.back()->until(1);
    }
    test::addCommand(console, U"much").onExecute = [](const auto&, Console& running) {
        for (int i = 0; i < 2000; ++i) {
            running.write(U"one of many lines", Output);
        }
    };
    PlainClient client("sandbox");
    client.next();
    EXPECT_EQ(2003u, client.run("much").size());
    for (const auto& follower : followers) {
        for (int i = 0; i < 2002; ++i) {
            ASSERT_TRUE(std::holds_alternative<EntryMessage>(follower->next()));
        }
    }
}

TEST_F(ConsoleServerTest, ListensAgainOnceTheProgramHasDescriptorsAgain)
{
    rlimit before{};
    ASSERT_EQ(0, getrlimit(RLIMIT_NOFILE, &before));
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0); // the highest that is in use
    rlimit none = before;
    none.rlim_cur = static_cast<rlim_t>(descriptor) + 1;
    ASSERT_EQ(0, setrlimit(RLIMIT_NOFILE, &none));
    sockaddr_un address{AF_UNIX, {}};
    const QByteArray path = QFile::encodeName(SocketPlace::ofUser().socketOf("sandbox"));
    std::copy(path.begin(), path.end(), address.sun_path);
    EXPECT_EQ(0, ::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address));
    for (int i = 0; i < 20; ++i) { // in which the client can't be taken
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(0u, server->clientCount());
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_TRUE(waitUntil([] {
        PlainClient client("sandbox");
        return std::holds_alternative<HelloMessage>(client.next());
    }));
    ::close(descriptor);
}

TEST_F(ConsoleServerTest, ReadsNoMoreOfAFloodThanItServes)
{
    PlainClient flood("sandbox");
    flood.next();
    QByteArray lines;
    for (int i = 0; i < 20000; ++i) {
        lines += toLine(Request(RunRequest{i, "echo a"}));
    }
    flood.send(lines);
    PlainClient other("sandbox");
    other.next();
    EXPECT_EQ("ok", other.run("echo b").back());
    EXPECT_LT(console.logSize(), 30000u) << "its turn came before all the others had theirs";
    flood.until(19999);
}

TEST_F(ConsoleServerTest, EndsTheConnectionOfAClientThatTalksNonsense)
{
    const std::vector<std::pair<QByteArray, std::string>> nonsense{
        {"GET / HTTP/1.1\r\n\r\n", "error: This is no JSON: "},
        {"{}\n", "error: 'id' must be"},
        {QByteArray(100, '\0') + '\n', "error: This is no JSON: "},
        {QByteArray(100000, '[') + '\n', "error: This is no JSON: "},
        {QByteArray(kMaxRequestBytes + 1, 'a'), "error: A message may have 1048576 bytes at most."},
        {"\xff\xfe\n", "error: This is no JSON: "}};
    PlainClient other("sandbox");
    other.next();
    for (const auto& [bytes, error] : nonsense) {
        PlainClient client("sandbox");
        client.next();
        client.send(bytes);
        EXPECT_EQ(0u, PlainClient::textsOf({client.next()}).front().find(error))
            << bytes.left(20).toStdString();
        EXPECT_EQ(Message(ErrorMessage{"none"}), client.next()) << "the connection has ended";
    }
    EXPECT_EQ("ok", other.run("echo a").back());
}

TEST_F(ConsoleServerTest, TakesALineOfTheGreatestLength)
{
    PlainClient client("sandbox");
    client.next();
    const QByteArray frame = R"({"id":1,"run":"echo "})";
    client.send(
        QByteArray(frame).replace("echo ", "echo " + QByteArray(kMaxRequestBytes - frame.size(), 'a')) +
        '\n');
    EXPECT_EQ("ok", PlainClient::textsOf(client.until(1)).back());
}

TEST_F(ConsoleServerTest, RunsNothingOfALineThatIsCutOff)
{
    std::optional<PlainClient> client("sandbox");
    client->next();
    client->send(R"({"id":1,"run":"echo cut off"})");
    client->socket.flush();
    client.reset();
    EXPECT_TRUE(waitUntil([&] { return server->clientCount() == 0; }));
    EXPECT_EQ(2u, console.logSize());
}

TEST_F(ConsoleServerTest, RefusesClientsBeyondItsGreatestNumber)
{
    std::vector<std::unique_ptr<PlainClient>> clients;
    for (std::size_t i = 0; i < ConsoleServer::kMaxClients; ++i) {
        clients.push_back(std::make_unique<PlainClient>("sandbox"));
        ASSERT_TRUE(std::holds_alternative<HelloMessage>(clients.back()->next()));
    }
    PlainClient more("sandbox");
    EXPECT_EQ(Message(ErrorMessage{"100 clients are connected, and no more are served."}), more.next());
    EXPECT_EQ(Message(ErrorMessage{"none"}), more.next());
    clients.pop_back();
    EXPECT_TRUE(waitUntil([&] { return server->clientCount() < ConsoleServer::kMaxClients; }));
    PlainClient next("sandbox");
    EXPECT_TRUE(std::holds_alternative<HelloMessage>(next.next()));
}

TEST_F(ConsoleServerTest, WritesToTheLogOfAProgramWithoutClientsAsBefore)
{
    for (int i = 0; i < 1000; ++i) {
        console.write(U"a", Output);
    }
    EXPECT_EQ(1002u, console.logSize());
}

} // namespace
} // namespace zephyr::console::remote
