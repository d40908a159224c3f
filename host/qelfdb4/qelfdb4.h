// qelfdb4.h: the whole of qelfdb4.
#pragma once

#include <qelfdb4/dovblobdb.h>
