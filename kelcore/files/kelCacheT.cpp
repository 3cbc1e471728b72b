#include <kelcore/files/kelCacheFile.h>
#include <kelcore/files/kelCacheT.h>

namespace KELKIT {

// The one instance the library exports; its element type lives with kelCacheFile.
template class kelCacheT<kelString, kelCacheFile::FILE_DATA>;

} // namespace KELKIT
