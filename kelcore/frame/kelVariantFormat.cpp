#include <kelcore/frame/kelVariantFormat.h>

KEL_ENUM_DEFINE(kelVariantFormat, kelVariantFormat, KEL_ROWS_kelVariantFormat)
