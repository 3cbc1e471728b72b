#ifndef KELCORE_KELCORE_H
#define KELCORE_KELCORE_H

// Everything the library exports, in one include.

#include <kelcore/frame/kelDefaultComparator.h>
#include <kelcore/frame/kelException.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelIComparator.h>
#include <kelcore/frame/kelIHashable.h>
#include <kelcore/frame/kelILockable.h>
#include <kelcore/frame/kelIRunnable.h>
#include <kelcore/frame/kelISortable.h>
#include <kelcore/frame/kelPoint.h>
#include <kelcore/frame/kelReverseComparator.h>
#include <kelcore/frame/kelSize.h>
#include <kelcore/frame/kelTypes.h>

#include <kelcore/strings/kelString.h>
#include <kelcore/strings/kelStringTokenizer.h>
#include <kelcore/strings/kelStringXmlTokenizer.h>

#include <kelcore/containers/kelList.h>
#include <kelcore/containers/kelLists.h>

#include <kelcore/serialization/kelAbstractSerializer.h>
#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/serialization/kelISerializable.h>
#include <kelcore/serialization/kelISerializer.h>
#include <kelcore/serialization/kelMemorySerializer.h>

#endif
