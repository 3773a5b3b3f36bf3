#include "barcode/symbol.h"
