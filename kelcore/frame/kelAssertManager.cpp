#include <kelcore/frame/kelAssertManager.h>

#include <kelcore/frame/kelException.h>
#include <kelcore/platform/kelUserQuestion.h>
#include <kelcore/strings/kelString.h>
#include <kelcore/strings/kelStringConverter.h>

namespace KELKIT {

KEL_ENUM_DEFINE(kelAssertManager::Mode, Mode, KEL_ROWS_kelAssertManager_Mode)

namespace {

// The mode is one int read and written without a lock; atomic accesses keep a change made on
// one thread while another asserts well defined, at the price of nothing.
kelAssertManager::Mode::Enum loadMode(kelAssertManager::Mode const& mode) {
    return __atomic_load_n(&static_cast<kelAssertManager::Mode::Enum const&>(mode),
                           __ATOMIC_RELAXED);
}

} // namespace

kelAssertManager::kelAssertManager() : mMode(Mode::Default) {}

kelAssertManager::kelAssertManager(kelAssertManager const& other) : mMode(loadMode(other.mMode)) {}

kelAssertManager& kelAssertManager::operator=(kelAssertManager const& other) {
    setMode(loadMode(other.mMode));
    return *this;
}

kelAssertManager::~kelAssertManager() = default;

kelAssertManager& kelAssertManager::getInstance() {
    static kelAssertManager instance;
    return instance;
}

void kelAssertManager::setMode(Mode mode) {
    __atomic_store_n(&static_cast<Mode::Enum&>(mMode), static_cast<Mode::Enum>(mode.getValue()),
                     __ATOMIC_RELAXED);
}

kelAssertManager::Mode const& kelAssertManager::getMode() const {
    return mMode;
}

void kelAssertManager::processError(char const* file, int line, char const* expression) {
    kelString const message = kelStringConverter::format(
        "kelAssertion failed: (%s), file %s, line %d\n", expression != nullptr ? expression : "",
        file != nullptr ? file : "", line);
    switch (loadMode(mMode)) {
    case Mode::Message: {
        kelString question = message;
        question.append('\n');
        question.append("Do you want to continue execution ?");
        if (!showMessage(question.c_str())) {
            platform::endProcessNow();
        }
        return;
    }
    case Mode::Exception:
        throw kelException(message.c_str());
    default: // Default, and any value without a name
        return;
    }
}

bool kelAssertManager::showMessage(char const* text) {
    return platform::askYesNo("kelAssert error", text);
}

} // namespace KELKIT
