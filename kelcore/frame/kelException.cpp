#include <kelcore/frame/kelException.h>

namespace KELKIT {

kelException::kelException(char const* description)
    : mErrorNumber(0), mSourceFile(), mLineNumber(0) {
    setErrorNumber(0);
    setDescription(description);
}

kelException::kelException(char const* description, char const* sourceFile, UInt32 lineNumber)
    : mErrorNumber(0), mSourceFile(sourceFile), mLineNumber(lineNumber) {
    setErrorNumber(0);
    setDescription(description);
}

kelException::kelException(UInt32 errorNumber, char const* description)
    : mErrorNumber(0), mSourceFile(), mLineNumber(0) {
    setErrorNumber(errorNumber);
    setDescription(description);
}

kelException::kelException(UInt32 errorNumber, char const* description, char const* sourceFile,
                           UInt32 lineNumber)
    : mErrorNumber(0), mSourceFile(sourceFile), mLineNumber(lineNumber) {
    setErrorNumber(errorNumber);
    setDescription(description);
}

kelException::kelException(kelException const& other) = default;

kelException& kelException::operator=(kelException const& other) = default;

kelException::~kelException() = default;

UInt32 kelException::getErrorNumber() const {
    return mErrorNumber;
}

char const* kelException::getDescription() const {
    return mDescription.c_str();
}

char const* kelException::getSourceFile() const {
    return mSourceFile.c_str();
}

UInt32 kelException::getLineNumber() const {
    return mLineNumber;
}

void kelException::setErrorNumber(UInt32 errorNumber) {
    mErrorNumber = errorNumber;
}

void kelException::setDescription(char const* description) {
    mDescription = description;
}

} // namespace KELKIT
