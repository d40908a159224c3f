// qelsq4.h: the whole of qelsq4.
#pragma once

#include <qelsq4/qelsqlite.h>
#include <qelsq4/sqlitetransaction.h>
