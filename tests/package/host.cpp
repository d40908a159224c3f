// host.cpp: the smallest host, built outside the project against an installed library.
#include <qelprop4/qelprop4.h>

int main()
{
    CQelSQLite connection;
    connection.Open(L":memory:");
    CQelPropDB db(&connection);
    CQelTable lamps;
    lamps.Properties().name = L"Lamps";
    return db.Attach(true, nullptr) == 10001 && db.AddTable(lamps) == 10001 ? 0 : 1;
}
