#include "rw/rwcstring.h"  // base must not know rw: the check has to object
