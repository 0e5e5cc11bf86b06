#include "mergeview/row_colours.h"
