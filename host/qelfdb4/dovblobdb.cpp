// dovblobdb.cpp: the record store as its users see it.
#include <qelfdb4/dovblobdb.h>
