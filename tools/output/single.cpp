// single.cpp: prints one thing in the form that fits it.
#include "single.h"

#include "json_writer.h"
#include "output.h"
#include "screen_text.h"

#include <algorithm>

namespace tool {

void CSingle::Add(const std::string& name, const CQelProperty& value, const std::string& remark)
{
    m_names.push_back(name);
    m_values.push_back(value);
    m_remarks.push_back(remark.empty() ? "" : " (" + remark + ")");
}

void CSingle::Print(CContext& context) const
{
    COutput output(context);
    const SRowStyle style = StyleOf(context);
    if (style.format == EFormat::eJson) {
        output.Stream() << JsonObject(m_names, m_values, style) << '\n';
    } else if (style.format == EFormat::eTable) {
        std::size_t widest = 0;
        for (const std::string& name : m_names)
            widest = std::max(widest, Columns(OneLine(Wide(name))));
        for (std::size_t index = 0; index < m_names.size(); ++index) {
            const std::string name = Padded(OneLine(Wide(m_names[index])), widest, false);
            const std::string line = name + "  " + ScreenText(m_values[index], style) + m_remarks[index];
            output.Stream() << (style.width == 0 ? line : Cut(line, style.width)) << '\n';
        }
    } else {
        const auto writer = CRowWriter::Make(style, m_names, output.Stream());
        writer->Write(m_values);
        writer->Finish();
    }
    output.Finish();
}

} // namespace tool
