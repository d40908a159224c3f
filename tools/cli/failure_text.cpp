// failure_text.cpp: program, file, line, what is wrong; then what may help.
#include "failure_text.h"

#include "context.h"
#include "output/screen_text.h"

#include <nlohmann/json.hpp>

namespace tool {
namespace {

std::string PlainText(const SFailure& failure)
{
    const auto shown = [](const std::string& text) { return OneLine(Wide(text)); };
    std::string text = "qelprop: ";
    if (!failure.file.empty()) {
        text += shown(failure.file) + ':';
        if (failure.line != 0)
            text += std::to_string(failure.line) + ':';
        text += ' ';
    }
    text += shown(failure.message);
    if (failure.code != 0)
        text += " (" + std::to_string(failure.code) + ')';
    return text + '\n' + (failure.hint.empty() ? "" : "hint: " + shown(failure.hint) + '\n');
}

std::string Line(const nlohmann::ordered_json& object)
{
    return object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
}

std::string JsonText(const SFailure& failure)
{
    nlohmann::ordered_json object;
    object["program"] = "qelprop";
    if (!failure.file.empty())
        object["file"] = failure.file;
    if (failure.line != 0)
        object["line"] = failure.line;
    object["message"] = failure.message;
    if (failure.code != 0)
        object["code"] = failure.code;
    if (!failure.hint.empty())
        object["hint"] = failure.hint;
    object["exit"] = static_cast<int>(failure.exit);
    return Line(object);
}

} // namespace

std::string FailureText(const SFailure& failure, bool json)
{
    return json ? JsonText(failure) : PlainText(failure);
}

std::string NoteText(const std::string& note, bool json)
{
    return json ? Line({{"program", "qelprop"}, {"note", note}}) : OneLine(Wide(note)) + '\n';
}

} // namespace tool
