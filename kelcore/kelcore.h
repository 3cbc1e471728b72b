#ifndef KELCORE_KELCORE_H
#define KELCORE_KELCORE_H

// Everything the library exports, in one include.

#include <kelcore/frame/DailyType.h>
#include <kelcore/frame/RepetitiveType.h>
#include <kelcore/frame/ScheduleType.h>
#include <kelcore/frame/kelAssertManager.h>
#include <kelcore/frame/kelBaseEnum.h>
#include <kelcore/frame/kelDefaultComparator.h>
#include <kelcore/frame/kelDriveType.h>
#include <kelcore/frame/kelEventTypes.h>
#include <kelcore/frame/kelException.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelFileAttributes.h>
#include <kelcore/frame/kelFileOperationFlag.h>
#include <kelcore/frame/kelFileOperationType.h>
#include <kelcore/frame/kelFileSizeUnit.h>
#include <kelcore/frame/kelGlobal.h>
#include <kelcore/frame/kelGuid.h>
#include <kelcore/frame/kelIComparator.h>
#include <kelcore/frame/kelIHashable.h>
#include <kelcore/frame/kelILockable.h>
#include <kelcore/frame/kelIRunnable.h>
#include <kelcore/frame/kelISortable.h>
#include <kelcore/frame/kelMonth.h>
#include <kelcore/frame/kelNumbers.h>
#include <kelcore/frame/kelPoint.h>
#include <kelcore/frame/kelRandom.h>
#include <kelcore/frame/kelReverseComparator.h>
#include <kelcore/frame/kelSize.h>
#include <kelcore/frame/kelTaskState.h>
#include <kelcore/frame/kelTimeUnit.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/frame/kelVariantFormat.h>
#include <kelcore/frame/kelVersion.h>
#include <kelcore/frame/kelWeekDay.h>

#include <kelcore/strings/kelString.h>
#include <kelcore/strings/kelStringConverter.h>
#include <kelcore/strings/kelStringTokenizer.h>
#include <kelcore/strings/kelStringXmlTokenizer.h>

#include <kelcore/containers/kelList.h>
#include <kelcore/containers/kelLists.h>
#include <kelcore/containers/kelMapUint64String.h>
#include <kelcore/containers/kelNode.h>
#include <kelcore/containers/kelNodeComparator.h>
#include <kelcore/containers/kelNodeDefaultComparator.h>
#include <kelcore/containers/kelNodeFilter.h>
#include <kelcore/containers/kelNodeTextComparator.h>
#include <kelcore/containers/kelNodeTextFilter.h>
#include <kelcore/containers/kelTextNode.h>

#include <kelcore/variant/kelVariant.h>

#include <kelcore/time/kelSchedule.h>
#include <kelcore/time/kelTime.h>
#include <kelcore/time/kelTimer.h>

#include <kelcore/concurrency/kelBaseThread.h>
#include <kelcore/concurrency/kelCriticalSection.h>
#include <kelcore/concurrency/kelEventThread.h>
#include <kelcore/concurrency/kelHeartBeat.h>
#include <kelcore/concurrency/kelListHeartBeat.h>
#include <kelcore/concurrency/kelListHeartBeatPtr.h>
#include <kelcore/concurrency/kelMutex.h>
#include <kelcore/concurrency/kelScheduler.h>
#include <kelcore/concurrency/kelSchedulerThread.h>
#include <kelcore/concurrency/kelSharedMemory.h>
#include <kelcore/concurrency/kelThread.h>
#include <kelcore/concurrency/kelThreadIndirect.h>

#include <kelcore/serialization/kelAbstractSerializer.h>
#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/serialization/kelBufferedSerializer.h>
#include <kelcore/serialization/kelFileDumper.h>
#include <kelcore/serialization/kelFileSerializer.h>
#include <kelcore/serialization/kelIDumper.h>
#include <kelcore/serialization/kelISerializable.h>
#include <kelcore/serialization/kelISerializer.h>
#include <kelcore/serialization/kelMemoryDumper.h>
#include <kelcore/serialization/kelMemorySerializer.h>

#include <kelcore/memory/kelBitAccumulator.h>
#include <kelcore/memory/kelBitAdaptor.h>
#include <kelcore/memory/kelBitsPacker.h>
#include <kelcore/memory/kelBoolPacker.h>
#include <kelcore/memory/kelBufferInputStream.h>
#include <kelcore/memory/kelBufferOutputStream.h>
#include <kelcore/memory/kelFileInputStream.h>
#include <kelcore/memory/kelFileOutputStream.h>
#include <kelcore/memory/kelIPacker.h>
#include <kelcore/memory/kelInputStream.h>
#include <kelcore/memory/kelLinkedBuffer.h>
#include <kelcore/memory/kelListMemoryBlock.h>
#include <kelcore/memory/kelListMemoryBlockPtr.h>
#include <kelcore/memory/kelMemory.h>
#include <kelcore/memory/kelMemoryBlock.h>
#include <kelcore/memory/kelMemoryBuffer.h>
#include <kelcore/memory/kelOutputStream.h>
#include <kelcore/memory/kelStreamUtils.h>

#include <kelcore/files/kelCacheFile.h>
#include <kelcore/files/kelCacheT.h>
#include <kelcore/files/kelDrive.h>
#include <kelcore/files/kelEnv.h>
#include <kelcore/files/kelFile.h>
#include <kelcore/files/kelFileCopyEvent.h>
#include <kelcore/files/kelFileCriteria.h>
#include <kelcore/files/kelFileCriteriaAll.h>
#include <kelcore/files/kelFileCriteriaDefault.h>
#include <kelcore/files/kelFileDeleteEvent.h>
#include <kelcore/files/kelFileItem.h>
#include <kelcore/files/kelFileRenamer.h>
#include <kelcore/files/kelFiles.h>
#include <kelcore/files/kelFolder.h>
#include <kelcore/files/kelFolderCopyEvent.h>
#include <kelcore/files/kelFolderDeleteEvent.h>
#include <kelcore/files/kelListDrive.h>
#include <kelcore/files/kelListDrivePtr.h>
#include <kelcore/files/kelSystem.h>

#include <kelcore/events/kelAbstractController.h>
#include <kelcore/events/kelAbstractModel.h>
#include <kelcore/events/kelAbstractObservable.h>
#include <kelcore/events/kelAbstractView.h>
#include <kelcore/events/kelCancelActionEvent.h>
#include <kelcore/events/kelEvent.h>
#include <kelcore/events/kelEventNotifier.h>
#include <kelcore/events/kelEventPublisher.h>
#include <kelcore/events/kelIController.h>
#include <kelcore/events/kelIModel.h>
#include <kelcore/events/kelIObservable.h>
#include <kelcore/events/kelIObserver.h>
#include <kelcore/events/kelIView.h>
#include <kelcore/events/kelListEventNotifierPtr.h>
#include <kelcore/events/kelListIModel.h>
#include <kelcore/events/kelListIObserver.h>
#include <kelcore/events/kelListIView.h>

#include <kelcore/tasks/kelListTask.h>
#include <kelcore/tasks/kelListTaskPtr.h>
#include <kelcore/tasks/kelStateMachine.h>
#include <kelcore/tasks/kelTask.h>
#include <kelcore/tasks/kelTaskTree.h>

#include <kelcore/logging/kelBaseLogger.h>
#include <kelcore/logging/kelConsoleLogger.h>
#include <kelcore/logging/kelFileLogger.h>
#include <kelcore/logging/kelILogger.h>

#include <kelcore/menus/kelIcon.h>
#include <kelcore/menus/kelIconTransparency.h>
#include <kelcore/menus/kelMenu.h>
#include <kelcore/menus/kelMenuCommandIdFilter.h>
#include <kelcore/menus/kelMenuNumbering.h>
#include <kelcore/menus/kelMenuSeparator.h>
#include <kelcore/menus/kelMenuSequentialIdFilter.h>
#include <kelcore/menus/kelMenuUniqueIdFilter.h>

#if defined(_WIN32)
// The native menu binding, Windows build only. Its headers declare the few system types they
// take without <windows.h>.
#include <kelcore/menus/win32/kelMenuTools.h>
#include <kelcore/menus/win32/kelWin32Utils.h>
#endif

#endif
