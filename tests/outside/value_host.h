// value_host.h: a host of single values: what it derives, makes and reads, through public headers alone.
#pragma once

#include "../support/environment.h"
#include "../support/hex.h"
#include "../support/row_name.h"
#include "../support/sample_values.h"
#include "../support/time_zone.h"

#include <gtest/gtest.h>
#include <qellib4/qellib4.h>
#include <qelplat4/mfc.h>
#include <qelplat4/oleauto.h>
#include <qelprop4/qelprop4.h>

#include <limits>
#include <string>

namespace outside {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A host that derives, and so reaches what is protected.
class CDerivedValue : public CQelProperty
{
public:
    using CQelProperty::Clear;
    using CQelProperty::ToXString;
};

/// The value that stored bytes, written as hexadecimal digits, give.
inline CQelProperty Stored(const std::string& hex)
{
    CQelMemFile file(false, 64, 64);
    qeltest::Fill(file, hex);
    CQelProperty value;
    file >> value;
    return value;
}

/// Stored bytes of a type: version, reserved word 0, no buffer, no symbol and the payload.
inline std::string Scalar(const std::string& version, const std::string& type, const std::string& payload)
{
    return version + type + "0000000000000000" + "00000000" + payload;
}

/// The buffer as hexadecimal digits; "none" for a null pointer.
inline std::string BufferOf(const CQelProperty& value)
{
    const CQelProperty::SData& data = value.Data();
    return data.pBuffer == nullptr ? "none" : qeltest::HexOf(data.pBuffer, data.nBufferSize);
}

/// A DateTime's or another type's payload under a type that its setter would cut.
inline CQelProperty Moment(double oleDate, CQelProperty::EType type)
{
    return qeltest::Retagged(qeltest::DateTime(oleDate), type);
}

/// "<" one way, ">" the other way, "-" neither; "=" behind it when the values are equal.
inline std::string Compared(const CQelProperty& left, const CQelProperty& right)
{
    std::string text = left < right ? "<" : "";
    text += right < left ? ">" : "";
    return (text.empty() ? "-" : text) + (left == right ? "=" : "");
}

} // namespace outside
