#include "protocol/Message.h"
#include "protocol/Request.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace zephyr::console::remote {
namespace {

TEST(Requests, ComeBackFromTheirLines)
{
    const std::vector<Request> requests{RunRequest{1, "wind set 4 90"},
                                        RunRequest{0, QString::fromUtf8("say \"\u00e9\" \n\t\U0001F32C")},
                                        CompleteRequest{9007199254740991, "wind s"},
                                        FollowRequest{3, true, 118},
                                        FollowRequest{3, true, std::nullopt},
                                        FollowRequest{4, false, std::nullopt}};
    for (const Request& request : requests) {
        const QByteArray line = toLine(request);
        EXPECT_EQ(line.size() - 1, line.indexOf('\n'));
        const auto read = readRequest(line);
        ASSERT_TRUE(std::holds_alternative<Request>(read));
        EXPECT_EQ(request, std::get<Request>(read));
    }
}

TEST(Requests, MayHaveMembersThatNobodyKnows)
{
    const auto read = readRequest(R"({"id":1,"run":"help","colour":"green"})");
    EXPECT_EQ(Request(RunRequest{1, "help"}), std::get<Request>(read));
}

TEST(Requests, AreRefusedWithAReason)
{
    const std::vector<std::pair<QByteArray, QString>> wrong{
        {"", "This is no JSON: "}, // and what Qt says of it
        {"help", "This is no JSON: "},
        {R"({"id":1,"run":"help")", "This is no JSON: "},
        {"[]", "A message must be a JSON object."},
        {R"({"run":"help"})", "'id' must be a whole number from 0 to 9007199254740991."},
        {R"({"id":"1","run":"help"})", "'id' must be a whole number from 0 to 9007199254740991."},
        {R"({"id":-1,"run":"help"})", "'id' must be a whole number from 0 to 9007199254740991."},
        {R"({"id":1.5,"run":"help"})", "'id' must be a whole number from 0 to 9007199254740991."},
        {R"({"id":9007199254740992,"run":"help"})",
         "'id' must be a whole number from 0 to 9007199254740991."},
        {R"({"id":1})", "A request must have one of 'run', 'complete' and 'follow'."},
        {R"({"id":1,"run":"a","complete":"b"})",
         "A request must have one of 'run', 'complete' and 'follow'."},
        {R"({"id":1,"run":7})", "'run' must be a text."},
        {R"({"id":1,"complete":null})", "'complete' must be a text."},
        {R"({"id":1,"follow":1})", "'follow' must be true or false."},
        {R"({"id":1,"follow":true,"from":-1})", "'from' must be a whole number from 0 on."},
        {R"({"id":1,"follow":true,"from":"1"})", "'from' must be a whole number from 0 on."},
    };
    for (const auto& [line, reason] : wrong) {
        const auto read = readRequest(line);
        ASSERT_TRUE(std::holds_alternative<ProtocolError>(read)) << line.toStdString();
        const QString text = std::get<ProtocolError>(read).text;
        EXPECT_TRUE(reason.endsWith(' ') ? text.startsWith(reason) : text == reason) << text.toStdString();
    }
}

TEST(Messages, ComeBackFromTheirLines)
{
    const Entry entry{7, Entry::Type::Output, "a\nb"};
    const std::vector<Message> messages{HelloMessage{1, "sandbox", 4711, 120},
                                        EntryMessage{1, entry},
                                        EntryMessage{std::nullopt, entry},
                                        DoneMessage{1, Outcome::Ok, ""},
                                        DoneMessage{2, Outcome::Failed, "speed: 75 is above 60 m/s."},
                                        DoneMessage{3, Outcome::Unknown, "'x' is not known."},
                                        CandidatesMessage{4, {"set", "show"}, 5},
                                        CandidatesMessage{4, {}, 0},
                                        ErrorMessage{"The line is too long."}};
    for (const Message& message : messages) {
        const QByteArray line = toLine(message);
        EXPECT_EQ(line.size() - 1, line.indexOf('\n'));
        const auto read = readMessage(line);
        ASSERT_TRUE(std::holds_alternative<Message>(read)) << line.toStdString();
        EXPECT_EQ(message, std::get<Message>(read));
    }
}

TEST(Messages, AreOfNoOtherLine)
{
    for (const char* const line :
         {"", "{}", "[1]", R"({"zephyrConsole":"1"})", R"({"zephyrConsole":1e30})", R"({"entry":{}})",
          R"({"entry":{"index":1,"type":"output","text":""},"id":"x"})", R"({"done":"ok"})",
          R"({"id":1,"done":"perhaps"})", R"({"id":1,"candidates":"a","from":0})",
          R"({"id":1,"candidates":[]})"}) {
        EXPECT_TRUE(std::holds_alternative<ProtocolError>(readMessage(line))) << line;
    }
}

} // namespace
} // namespace zephyr::console::remote
