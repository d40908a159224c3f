// qelprop4.h: the whole library.
#pragma once

#include <qelprop4/propdbtypes.h>
#include <qelprop4/qelpropdb.h>
#include <qelprop4/qelpropdb3x.h>
#include <qelprop4/qelproperty.h>
#include <qelprop4/qeltable.h>
#include <qelprop4/qeltable3x.h>
#include <qelsq4/qelsq4.h>
