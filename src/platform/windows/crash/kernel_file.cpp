#include "platform/windows/crash/kernel_file.h"

#include <winternl.h>

#include <algorithm>

#include "platform/windows/patience.h"
#include "platform/windows/system_error.h"

namespace platform_windows::crash {

namespace {

constexpr ULONG shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

OpenedFile create(const KernelPath& path, ACCESS_MASK access, ULONG share, ULONG disposition, ULONG options) noexcept {
    OpenedFile result;
    if (path.empty()) {
        result.error = ERROR_INVALID_NAME;
        return result;
    }
    UNICODE_STRING name{};
    name.Length = static_cast<USHORT>(path.view().size() * sizeof(wchar_t));
    name.MaximumLength = name.Length;
    name.Buffer = const_cast<wchar_t*>(path.view().data());
    OBJECT_ATTRIBUTES attributes{};
    attributes.Length = sizeof(attributes);
    attributes.ObjectName = &name;
    attributes.Attributes = OBJ_CASE_INSENSITIVE;
    IO_STATUS_BLOCK block{};
    HANDLE file = INVALID_HANDLE_VALUE;
    const NTSTATUS status =
        ::NtCreateFile(&file, access | SYNCHRONIZE | FILE_READ_ATTRIBUTES, &attributes, &block, nullptr,
                       FILE_ATTRIBUTE_NORMAL, share, disposition, options | FILE_SYNCHRONOUS_IO_NONALERT, nullptr, 0);
    if (NT_SUCCESS(status)) {
        result.file = FileHandle(file);
    } else {
        result.error = ::RtlNtStatusToDosError(status);
    }
    return result;
}

// "krvwinpr-" and something, ".tmp", which is removed some day where it is left; see unfinished_file.h.
KernelPath unfinishedBeside(const KernelPath& path) noexcept {
    std::array<wchar_t, 26> name{};
    constexpr std::wstring_view beginning = L"krvwinpr-";
    constexpr std::wstring_view digits = L"0123456789abcdef";
    constexpr std::wstring_view ending = L".tmp";
    constexpr unsigned digit = 4;  // bits
    auto* place = std::copy(beginning.begin(), beginning.end(), name.data());
    for (const DWORD number : {::GetCurrentProcessId(), ::GetTickCount()}) {
        for (unsigned shift = 0; shift < 24; shift += digit) {
            *place++ = digits[number >> shift & 0xFU];
        }
    }
    place = std::copy(ending.begin(), ending.end(), place);
    return path.beside({name.data(), static_cast<std::size_t>(place - name.data())});
}

}  // namespace

KernelPath::KernelPath(std::wstring_view path, std::wstring_view name) noexcept {
    if (!path.empty()) {
        const KernelName kernel = kernelName(path);
        add(kernel.prefix);
        add(kernel.rest);
        add(name);
    }
}

KernelPath KernelPath::beside(std::wstring_view name) const noexcept {
    KernelPath result;
    result.add(view().substr(0, view().rfind(L'\\') + 1));
    result.add(name);
    return result;
}

void KernelPath::add(std::wstring_view text) noexcept {
    whole_ = whole_ && text.size() <= longest - length_;
    if (!whole_) {
        length_ = 0;
        return;
    }
    std::copy(text.begin(), text.end(), text_.begin() + static_cast<std::ptrdiff_t>(length_));
    length_ += text.size();
}

OpenedFile openFile(const KernelPath& path, ACCESS_MASK access, ULONG share, ULONG disposition) noexcept {
    return create(path, access, share, disposition, FILE_NON_DIRECTORY_FILE);
}

void makeFolder(const KernelPath& folder) noexcept {
    create(folder, FILE_LIST_DIRECTORY, shareAll, FILE_OPEN_IF, FILE_DIRECTORY_FILE);
}

DWORD replaceFile(const KernelPath& path, std::string_view content) noexcept {
    const OpenedFile opened = openFile(unfinishedBeside(path), GENERIC_WRITE | DELETE, shareAll, FILE_CREATE);
    if (opened.error != 0) {
        return opened.error;
    }
    static std::array<unsigned char, sizeof(FILE_RENAME_INFORMATION) + sizeof(KernelPath)> room;
    DWORD error = writeFromStart(opened.file.get(), content);
    if (error == 0) {
        error =
            patiently(replacingPatience, mayBeInUse, [&] { return renameFile(opened.file.get(), path.view(), room); });
    }
    if (error != 0) {
        setDeletion(opened.file.get(), true);
    }
    return error;
}

DWORD writeFileAnyway(const KernelPath& path, std::string_view content) noexcept {
    DWORD error = replaceFile(path, content);
    if (error == 0 || isLackOfRoom(error)) {
        return error;
    }
    OpenedFile opened;
    error = patiently(openingPatience, mayBeInUse, [&] {
        opened = openFile(path, GENERIC_WRITE, shareAll, FILE_OPEN_IF);
        return opened.error;
    });
    const auto size = static_cast<LONGLONG>(content.size());
    error = error != 0 ? error : setSize(opened.file.get(), size);
    return error != 0 ? error : writeFromStart(opened.file.get(), content);
}

}  // namespace platform_windows::crash
