// qelsqlite.cpp: a connection to an SQLite database.
#include <qelsq4/qelsqlite.h>
