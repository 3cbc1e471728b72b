#ifndef KELCORE_FRAME_KELEXCEPTION_H
#define KELCORE_FRAME_KELEXCEPTION_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// The library's one exception. It deliberately has no base class: a handler for
// std::exception does not catch it, so a caller of a serializer must handle it by name.
// Constructors without a source location leave the source file empty and the line number 0.
class KELCORE_API kelException {
public:
    explicit kelException(char const* description);
    kelException(char const* description, char const* sourceFile, UInt32 lineNumber);
    kelException(UInt32 errorNumber, char const* description);
    kelException(UInt32 errorNumber, char const* description, char const* sourceFile,
                 UInt32 lineNumber);
    kelException(kelException const& other);
    kelException& operator=(kelException const& other);
    virtual ~kelException();

    virtual UInt32 getErrorNumber() const;
    // Valid as long as the exception lives.
    virtual char const* getDescription() const;
    virtual char const* getSourceFile() const;
    virtual UInt32 getLineNumber() const;

protected:
    virtual void setErrorNumber(UInt32 errorNumber);
    virtual void setDescription(char const* description);

private:
    UInt32 mErrorNumber;
    kelString mDescription;
    kelString mSourceFile;
    UInt32 mLineNumber;
};

} // namespace KELKIT

#endif
