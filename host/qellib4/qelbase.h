// qelbase.h: the common base of the family's classes.
#pragma once

#include <qellib4/export.h>
#include <qelplat4/mfc.h>

/// Common base of values, tables and databases; holds nothing.
class QELLIB4_API CQelBase : public CObject
{
public:
    CQelBase() = default;
    CQelBase(const CQelBase&) = default;
    CQelBase& operator=(const CQelBase&) = default;
    ~CQelBase() override;
};
