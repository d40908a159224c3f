// qelbase.cpp: anchor of the common base.
#include <qellib4/qelbase.h>

CQelBase::~CQelBase() = default;
