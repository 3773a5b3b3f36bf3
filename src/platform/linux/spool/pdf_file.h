// A PDF that becomes a file in a folder, and is seen there only when it is complete.
#pragma once

#include <memory>
#include <string>

#include "platform/linux/documents/document_target.h"
#include "platform/linux/file_descriptor.h"
#include "platform/linux/unfinished_file.h"

namespace platform_linux::spool {

// A folder that stays the same one when the current directory changes.
struct Folder {
    FileDescriptor descriptor;
    std::string path;  // for messages

    static Folder at(const std::string& path);
    // The current directory.
    static Folder current();
};

// How a file is kept out of sight until it is complete: without any name, so that not even a killed process leaves
// it, or under a hidden name where the file system cannot do that (unfinished_file.h).
enum class Concealment { unnamed, hidden };

// Makes the file with the first page, as "NAME.pdf", or "NAME (2).pdf" and so on where that is taken at the moment of
// delivery; never replaces anything, whatever ways of giving a name the file system has.
class PdfFile : public documents::PdfOutput {
public:
    PdfFile(std::shared_ptr<const Folder> folder, std::string name, Concealment concealment);
    PdfFile(const PdfFile&) = delete;
    PdfFile& operator=(const PdfFile&) = delete;

    int descriptor() const override { return file_.get(); }
    void pageBegins() override;
    void deliver(const documents::PageOptions& firstPage) override;
    runtime::Error failure(const runtime::Error& cause) override;

protected:
    // Each false with errno set.
    virtual bool putInPlace();
    // Gives the file a hidden name, where it has none yet.
    bool hide();

    const Folder& folder() const { return *folder_; }
    const UnfinishedName& hidden() const { return hidden_; }
    // The file has its own name now.
    void inPlace() noexcept { hidden_.release(); }
    [[noreturn]] void fail(int systemError);

private:
    FileDescriptor makeUnnamed() const;
    FileDescriptor makeHidden();
    // Each false with errno set; EEXIST where the name is taken.
    bool putInPlace(const std::string& name);
    bool hideCopy();
    bool putHiddenInPlace(const std::string& name);
    bool putOverReservation(const std::string& name);
    bool fillReservation(const std::string& name) const;
    std::string subject() const;
    // For messages.
    virtual std::string fileName() const;
    virtual std::string advice() const { return " Sonst das Programm in einem anderen Ordner starten."; }

    std::shared_ptr<const Folder> folder_;
    std::string name_;
    Concealment concealment_;
    FileDescriptor file_;    // memory until the first page begins
    bool made_ = false;      // file_ is the file
    UnfinishedName hidden_;  // while it exists
};

}  // namespace platform_linux::spool
