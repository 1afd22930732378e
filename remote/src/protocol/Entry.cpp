#include "protocol/Entry.h"

#include <QJsonValue>

#include <algorithm>
#include <array>
#include <utility>

namespace zephyr::console::remote {

namespace {

constexpr std::array<std::pair<Entry::Type, const char*>, 3> kTypes{
    {{Entry::Type::Input, "input"}, {Entry::Type::Output, "output"}, {Entry::Type::Prompt, "prompt"}}};

} // namespace

const char kPromptText[] = ">> ";

QString shownText(const Entry& entry)
{
    return entry.type == Entry::Type::Input ? kPromptText + entry.text : entry.text;
}

QJsonObject toJson(const Entry& entry)
{
    const auto* const type = std::find_if(kTypes.begin(), kTypes.end(),
                                          [&](const auto& known) { return known.first == entry.type; });
    return {{"index", entry.index}, {"type", type->second}, {"text", entry.text}};
}

std::optional<Entry> entryFrom(const QJsonObject& object)
{
    const QString name = object["type"].toString();
    const auto* const type =
        std::find_if(kTypes.begin(), kTypes.end(), [&](const auto& known) { return name == known.second; });
    const qint64 index = object["index"].toInteger(-1);
    if (type == kTypes.end() || index < 0 || !object["text"].isString()) {
        return std::nullopt;
    }
    return Entry{index, type->first, object["text"].toString()};
}

} // namespace zephyr::console::remote
