#include "protocol/Message.h"

#include "protocol/Json.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace zephyr::console::remote {

namespace {

constexpr std::array<std::pair<Outcome, const char*>, 3> kOutcomes{
    {{Outcome::Ok, "ok"}, {Outcome::Failed, "failed"}, {Outcome::Unknown, "unknown"}}};

QJsonObject objectOf(const HelloMessage& hello)
{
    return {
        {"zephyrConsole", hello.version}, {"name", hello.name}, {"pid", hello.pid}, {"log", hello.logSize}};
}

QJsonObject objectOf(const EntryMessage& message)
{
    QJsonObject object{{"entry", toJson(message.entry)}};
    if (message.id) {
        object["id"] = *message.id;
    }
    return object;
}

QJsonObject objectOf(const DoneMessage& done)
{
    const auto* const outcome = std::find_if(kOutcomes.begin(), kOutcomes.end(),
                                             [&](const auto& known) { return known.first == done.outcome; });
    QJsonObject object{{"id", done.id}, {"done", outcome->second}};
    if (!done.reason.isEmpty()) {
        object["reason"] = done.reason;
    }
    return object;
}

QJsonObject objectOf(const CandidatesMessage& message)
{
    return {{"id", message.id},
            {"candidates", QJsonArray::fromStringList(message.candidates)},
            {"from", message.from}};
}

QJsonObject objectOf(const ErrorMessage& error) { return {{"error", error.text}}; }

std::optional<Message> helloFrom(const QJsonObject& object)
{
    const qint64 version = object["zephyrConsole"].toInteger(-1);
    if (version < 0 || version > std::numeric_limits<int>::max()) {
        return std::nullopt;
    }
    return HelloMessage{static_cast<int>(version), object["name"].toString(), object["pid"].toInteger(),
                        object["log"].toInteger()};
}

std::optional<Message> entryMessageFrom(const QJsonObject& object)
{
    const std::optional<Entry> entry = entryFrom(object["entry"].toObject());
    if (!entry || (object.contains("id") && !idOf(object))) {
        return std::nullopt;
    }
    return EntryMessage{idOf(object), *entry};
}

std::optional<Message> doneFrom(const QJsonObject& object)
{
    const QString name = object["done"].toString();
    const auto* const outcome = std::find_if(kOutcomes.begin(), kOutcomes.end(),
                                             [&](const auto& known) { return name == known.second; });
    if (!idOf(object) || outcome == kOutcomes.end()) {
        return std::nullopt;
    }
    return DoneMessage{*idOf(object), outcome->first, object["reason"].toString()};
}

std::optional<Message> candidatesFrom(const QJsonObject& object)
{
    const qint64 from = object["from"].toInteger(-1);
    if (!idOf(object) || from < 0 || !object["candidates"].isArray()) {
        return std::nullopt;
    }
    CandidatesMessage message{*idOf(object), {}, from};
    for (const QJsonValue candidate : object["candidates"].toArray()) {
        message.candidates += candidate.toString();
    }
    return message;
}

std::optional<Message> messageFrom(const QJsonObject& object)
{
    if (object.contains("zephyrConsole")) {
        return helloFrom(object);
    }
    if (object.contains("entry")) {
        return entryMessageFrom(object);
    }
    if (object.contains("done")) {
        return doneFrom(object);
    }
    if (object.contains("candidates")) {
        return candidatesFrom(object);
    }
    return object.contains("error") ? std::optional<Message>(ErrorMessage{object["error"].toString()})
                                    : std::nullopt;
}

} // namespace

std::variant<Message, ProtocolError> readMessage(const QByteArray& line)
{
    const auto read = objectOn(line);
    if (const auto* const error = std::get_if<ProtocolError>(&read)) {
        return *error;
    }
    std::optional<Message> message = messageFrom(std::get<QJsonObject>(read));
    if (!message) {
        return ProtocolError{"This is no message of the protocol."};
    }
    return *std::move(message);
}

QByteArray toLine(const Message& message)
{
    return toLine(std::visit([](const auto& one) { return objectOf(one); }, message));
}

} // namespace zephyr::console::remote
