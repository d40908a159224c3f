// qellib4.h: the whole of qellib4.
#pragma once

#include <qellib4/bitvector.h>
#include <qellib4/dovlogfile.h>
#include <qellib4/exceptionguard.h>
#include <qellib4/qelbase.h>
#include <qellib4/qelexception.h>
#include <qellib4/qelfile.h>
#include <qellib4/qelmemfile.h>
#include <qellib4/resultcodes.h>
#include <qellib4/tavblob.h>
#include <qellib4/tavcharconvert.h>
