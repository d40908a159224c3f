// framework.cpp: the framework's root class and its exception base.
#include <qelplat4/afxbase.h>

CObject::~CObject() = default;

CException::~CException() = default;

void CException::Delete()
{
    if (m_autoDelete)
        delete this;
}

std::wstring CException::GetErrorText() const
{
    return {};
}
