#include <kelcore/concurrency/kelSharedMemory.h>

#include <kelcore/concurrency/kelMutex.h>
#include <kelcore/platform/kelSharedBlock.h>

namespace KELKIT {

// Shared by the copies of one object; the last of them disconnects.
struct kelSharedMemory::Impl {
    std::unique_ptr<kelMutex> mutex; // null when not connected
    platform::SharedBlock* mapping = nullptr;
    unsigned char* view = nullptr; // connected exactly when not null

    Impl() = default;
    Impl(Impl const&) = delete;
    Impl& operator=(Impl const&) = delete;
    ~Impl() { disconnect(); }

    bool disconnect() {
        if (view == nullptr) {
            return true;
        }
        mutex->reserve();
        bool const released = platform::closeSharedBlock(mapping);
        mapping = nullptr;
        view = nullptr;
        mutex->release();
        mutex.reset();
        return released;
    }
};

kelSharedMemory::kelSharedMemory() : mImpl(std::make_shared<Impl>()) {}

kelSharedMemory::kelSharedMemory(char const* name, UInt32 size) : kelSharedMemory() {
    connect(name, size);
}

kelSharedMemory::kelSharedMemory(kelSharedMemory const& other) = default;

kelSharedMemory& kelSharedMemory::operator=(kelSharedMemory const& other) = default;

kelSharedMemory::~kelSharedMemory() = default;

bool kelSharedMemory::connect(char const* name, UInt32 size) {
    Impl& impl = *mImpl;
    if (impl.view != nullptr) {
        return true;
    }
    if (name == nullptr) {
        return false;
    }
    try {
        kelString mutexName;
        kelString memoryName;
        getNames(name, mutexName, memoryName);
        auto mutex = std::make_unique<kelMutex>(mutexName.c_str());
        // The block comes cleared from its creation, before any other process can attach to
        // it. Clearing it here, after the fact, could wipe what an early attacher has already
        // written under the lock.
        platform::SharedBlock* const mapping = platform::openSharedBlock(memoryName.c_str(), size);
        if (mapping == nullptr) {
            return false;
        }
        impl.mutex = std::move(mutex);
        impl.mapping = mapping;
        impl.view = platform::getSharedBlockView(*mapping);
        return true;
    } catch (...) {
        // The lock's texts and allocation failures alike end here: connect only answers.
        return false;
    }
}

bool kelSharedMemory::disconnect() {
    return mImpl->disconnect();
}

bool kelSharedMemory::isConnected() const {
    if (mImpl->mutex == nullptr) {
        return false;
    }
    mImpl->mutex->reserve();
    bool const connected = mImpl->view != nullptr;
    mImpl->mutex->release();
    return connected;
}

UInt32 kelSharedMemory::getSize() const {
    if (mImpl->view == nullptr) {
        return 0;
    }
    mImpl->mutex->reserve();
    UInt32 const size = platform::getSharedBlockSize(*mImpl->mapping);
    mImpl->mutex->release();
    return size;
}

unsigned char* kelSharedMemory::getBuffer() const {
    return mImpl->view;
}

void kelSharedMemory::lock() {
    if (mImpl->mutex != nullptr) {
        mImpl->mutex->reserve();
    }
}

void kelSharedMemory::unlock() {
    if (mImpl->mutex != nullptr) {
        mImpl->mutex->release();
    }
}

bool kelSharedMemory::exist(char const* name) {
    if (name == nullptr) {
        return false;
    }
    kelString mutexName;
    kelString memoryName;
    getNames(name, mutexName, memoryName);
    return platform::sharedBlockExists(memoryName.c_str());
}

void kelSharedMemory::getNames(char const* name, kelString& mutexName, kelString& memoryName) {
    mutexName = "mutex";
    mutexName += name;
    memoryName = "memory";
    memoryName += name;
}

} // namespace KELKIT
