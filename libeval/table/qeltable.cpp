// qeltable.cpp: the definition of one table.
#include <qelprop4/qeltable.h>
