#include "quillbook/base/CodePage.h"
