// afxbase.h: the framework's root class and the base of its exceptions.
#pragma once

#include <qelplat4/export.h>

#include <string>

/// Root of the framework's classes.
class QELPLAT4_API CObject
{
public:
    virtual ~CObject();

protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject& operator=(const CObject&) = default;
};

/// Base of the framework's exceptions, which are thrown and caught by pointer.
class QELPLAT4_API CException : public CObject
{
public:
    CException() = default;
    /// @param autoDelete  true when made with new, so that Delete() frees it
    explicit CException(bool autoDelete) : m_autoDelete(autoDelete) {}
    ~CException() override;

    /// Frees the exception if it was made to be freed; the pointer is dead afterwards.
    void Delete();

    /// A text for people; empty when the exception has none.
    virtual std::wstring GetErrorText() const;

private:
    bool m_autoDelete = true;
};
