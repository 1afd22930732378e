#include "zephyr/console/commands/Reference.h"

#include "ReferenceData.h"
#include "zephyr/common/StringUtil.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <string_view>

namespace zephyr::console::commands {

namespace {

constexpr std::u32string_view kSpecialInMarkdown = U"\\`*_{}[]<>#|";

/// `text` where Markdown would read some characters as marks.
std::u32string plain(const std::u32string& text)
{
    std::u32string result;
    for (const char32_t c : text) {
        if (kSpecialInMarkdown.find(c) != std::u32string_view::npos) {
            result += U'\\';
        }
        result += c == U'\n' ? U' ' : c;
    }
    return result;
}

/// `text` as code, which may hold back-quotes.
std::u32string code(const std::u32string& text)
{
    const bool hasQuote = text.find(U'`') != std::u32string::npos;
    return hasQuote ? U"`` " + text + U" ``" : U"`" + text + U"`";
}

std::u32string paragraph(const std::u32string& text)
{
    return text.empty() ? text : U"\n" + plain(text) + U"\n";
}

std::u32string sentence(const std::u32string& text) { return text.empty() ? text : U" " + plain(text); }

std::u32string markdown(const ReferenceParameter& parameter)
{
    std::u32string text = U"- " + code(parameter.usage);
    if (!parameter.byName.empty()) {
        text += U" or " + code(parameter.byName);
    }
    text += U": " + plain(parameter.expected);
    if (!parameter.byDefault.empty()) {
        text += U", by default " + plain(parameter.byDefault);
    }
    return text + U"." + sentence(parameter.description) + U"\n";
}

std::u32string markdown(const ReferenceForm& form)
{
    std::u32string text =
        U"\n" + code(form.usage) + U"\n" + paragraph(form.description) + paragraph(form.help);
    for (const ReferenceParameter& parameter : form.parameters) {
        text += (&parameter == &form.parameters.front() ? U"\n" : U"") + markdown(parameter);
    }
    return text;
}

std::u32string markdown(const ReferenceCommand& command)
{
    std::u32string text = U"\n## " + plain(command.name) + U"\n" + paragraph(command.description);
    for (const ReferenceForm& form : command.forms) {
        text += markdown(form);
    }
    return text;
}

std::u32string markdown(const ReferenceVariable& variable)
{
    return U"- " + code(variable.name) + U": " + plain(variable.expected) + U", by default " +
           plain(variable.byDefault) + (variable.isReadOnly ? U"; read-only." : U".") +
           sentence(variable.description) + U"\n";
}

std::u32string markdown(const ReferenceAlias& alias)
{
    std::u32string lines;
    for (const std::u32string& line : alias.lines) {
        lines += (lines.empty() ? U"" : U"; ") + line;
    }
    return U"- " + code(alias.name) + U" runs " + code(lines) + U"\n";
}

template <typename Item>
std::u32string section(const std::u32string& heading, const std::vector<Item>& items)
{
    std::u32string text = items.empty() ? U"" : U"\n# " + heading + U"\n\n";
    for (const Item& item : items) {
        text += markdown(item);
    }
    return text;
}

std::u32string markdown(const ReferenceData& data)
{
    std::u32string text = U"# Commands\n";
    for (const ReferenceCommand& command : data.commands) {
        text += markdown(command);
    }
    return text + section(U"Variables", data.variables) + section(U"Aliases", data.aliases);
}

QString toQt(const std::u32string& text) { return QString::fromStdU32String(text); }

/// Adds what isn't empty.
void put(QJsonObject& object, const char* key, const std::u32string& text)
{
    if (!text.empty()) {
        object[QLatin1String(key)] = toQt(text);
    }
}

template <typename Item, typename ToJson>
QJsonArray arrayOf(const std::vector<Item>& items, ToJson toJson)
{
    QJsonArray array;
    for (const Item& item : items) {
        array.append(toJson(item));
    }
    return array;
}

QJsonObject parameterObject(const ReferenceParameter& parameter)
{
    QJsonObject object;
    put(object, "usage", parameter.usage);
    put(object, "byName", parameter.byName);
    put(object, "expected", parameter.expected);
    put(object, "default", parameter.byDefault);
    put(object, "description", parameter.description);
    return object;
}

QJsonObject formObject(const ReferenceForm& form)
{
    QJsonObject object;
    put(object, "usage", form.usage);
    put(object, "description", form.description);
    put(object, "help", form.help);
    object[QLatin1String("parameters")] = arrayOf(form.parameters, parameterObject);
    return object;
}

QJsonObject commandObject(const ReferenceCommand& command)
{
    QJsonObject object;
    put(object, "name", command.name);
    put(object, "description", command.description);
    object[QLatin1String("forms")] = arrayOf(command.forms, formObject);
    return object;
}

QJsonObject variableObject(const ReferenceVariable& variable)
{
    QJsonObject object;
    put(object, "name", variable.name);
    put(object, "description", variable.description);
    put(object, "default", variable.byDefault);
    put(object, "expected", variable.expected);
    object[QLatin1String("readOnly")] = variable.isReadOnly;
    return object;
}

QJsonObject aliasObject(const ReferenceAlias& alias)
{
    QJsonObject object;
    put(object, "name", alias.name);
    object[QLatin1String("lines")] = arrayOf(alias.lines, toQt);
    return object;
}

} // namespace

std::string reference(Console& console, ReferenceFormat format)
{
    const ReferenceData data = referenceData(console);
    if (format == ReferenceFormat::Markdown) {
        return StringUtil::toString(markdown(data));
    }
    QJsonObject object;
    object[QLatin1String("commands")] = arrayOf(data.commands, commandObject);
    object[QLatin1String("variables")] = arrayOf(data.variables, variableObject);
    object[QLatin1String("aliases")] = arrayOf(data.aliases, aliasObject);
    return QJsonDocument(object).toJson().toStdString();
}

} // namespace zephyr::console::commands
