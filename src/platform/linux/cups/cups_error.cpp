#include "platform/linux/cups/cups_error.h"

#include <cups/ipp.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>

namespace platform_linux::cups {

namespace {

using platform::Recovery;

constexpr std::uint32_t lastServerError = 0x5FF;

struct StatusText {
    ipp_status_t status;
    std::string_view text;
};

constexpr std::array statusTexts = {
    StatusText{IPP_STATUS_ERROR_BAD_REQUEST, "Die Anfrage ist fehlerhaft."},
    StatusText{IPP_STATUS_ERROR_FORBIDDEN, "Der Zugriff ist nicht gestattet."},
    StatusText{IPP_STATUS_ERROR_NOT_AUTHENTICATED, "Der Zugriff verlangt eine Anmeldung."},
    StatusText{IPP_STATUS_ERROR_NOT_AUTHORIZED, "Die Berechtigung fehlt."},
    StatusText{IPP_STATUS_ERROR_NOT_POSSIBLE, "Das ist zurzeit nicht möglich."},
    StatusText{IPP_STATUS_ERROR_TIMEOUT, "Die Zeit ist abgelaufen."},
    StatusText{IPP_STATUS_ERROR_NOT_FOUND, "Der Drucker ist nicht vorhanden."},
    StatusText{IPP_STATUS_ERROR_GONE, "Der Drucker ist nicht mehr vorhanden."},
    StatusText{IPP_STATUS_ERROR_REQUEST_ENTITY, "Der Auftrag ist zu groß."},
    StatusText{IPP_STATUS_ERROR_DOCUMENT_FORMAT_NOT_SUPPORTED, "Der Drucker kann keine PDF-Dokumente drucken."},
    StatusText{IPP_STATUS_ERROR_INTERNAL, "Interner Fehler des Druckdienstes."},
    StatusText{IPP_STATUS_ERROR_OPERATION_NOT_SUPPORTED, "Der Druckdienst kennt diese Anfrage nicht."},
    StatusText{IPP_STATUS_ERROR_SERVICE_UNAVAILABLE, "Der Druckdienst ist nicht erreichbar."},
    StatusText{IPP_STATUS_ERROR_DEVICE, "Gerätefehler des Druckers."},
    StatusText{IPP_STATUS_ERROR_TEMPORARY, "Vorübergehender Fehler."},
    StatusText{IPP_STATUS_ERROR_NOT_ACCEPTING_JOBS, "Der Drucker nimmt keine Aufträge an."},
    StatusText{IPP_STATUS_ERROR_BUSY, "Der Druckdienst ist überlastet."},
    StatusText{IPP_STATUS_ERROR_JOB_CANCELED, "Der Auftrag wurde abgebrochen."},
    StatusText{IPP_STATUS_ERROR_CUPS_AUTHENTICATION_CANCELED, "Die Anmeldung wurde abgebrochen."},
};

// Of the server's errors (RFC 8011, section B.1.5) those that lie in the request stay.
Recovery recoveryFrom(std::uint32_t code) {
    switch (code) {
        case IPP_STATUS_ERROR_NOT_POSSIBLE:  // too many jobs
        case IPP_STATUS_ERROR_TIMEOUT:
            return Recovery::possible;
        case IPP_STATUS_ERROR_JOB_CANCELED:
            return Recovery::cancelled;
        case IPP_STATUS_ERROR_OPERATION_NOT_SUPPORTED:
        case IPP_STATUS_ERROR_VERSION_NOT_SUPPORTED:
        case IPP_STATUS_ERROR_MULTIPLE_JOBS_NOT_SUPPORTED:
            return Recovery::none;
        default:
            return code < firstIppStatus || (code >= IPP_STATUS_ERROR_INTERNAL && code <= lastServerError)
                       ? Recovery::possible
                       : Recovery::none;
    }
}

std::string advice(std::uint32_t code, const std::string& queue) {
    if (code < firstIppStatus || code == IPP_STATUS_ERROR_SERVICE_UNAVAILABLE) {
        return "Bitte prüfen, ob der Druckdienst läuft („lpstat -r“).";
    }
    switch (code) {
        case IPP_STATUS_ERROR_NOT_FOUND:
        case IPP_STATUS_ERROR_GONE:
            return "Bitte den Namen prüfen; „lpstat -e“ nennt alle Drucker.";
        case IPP_STATUS_ERROR_NOT_ACCEPTING_JOBS:
            return "Bitte den Drucker wieder freigeben („cupsaccept " + queue + "“) oder einen anderen wählen.";
        case IPP_STATUS_ERROR_FORBIDDEN:
        case IPP_STATUS_ERROR_NOT_AUTHENTICATED:
        case IPP_STATUS_ERROR_NOT_AUTHORIZED:
        case IPP_STATUS_ERROR_CUPS_AUTHENTICATION_CANCELED:
            return "Bitte den Verwalter des Druckdienstes um die Berechtigung bitten.";
        default:
            return "Bitte den Drucker prüfen („lpstat -l -p " + queue + "“).";
    }
}

}  // namespace

std::string statusText(std::uint32_t code) {
    if (code == 0) {
        return {};
    }
    if (code < firstIppStatus) {
        return std::generic_category().message(static_cast<int>(code));
    }
    const auto* found = std::find_if(statusTexts.begin(), statusTexts.end(), [code](const StatusText& entry) {
        return static_cast<std::uint32_t>(entry.status) == code;
    });
    if (found != statusTexts.end()) {
        return std::string(found->text);
    }
    // For a code that it does not know, libcups makes up a text that is nothing but the code's digits.
    const std::string keyword = ippErrorString(static_cast<ipp_status_t>(code));
    return keyword.find('-') != std::string::npos ? keyword : std::string();
}

platform::SpoolerError failure(std::uint32_t code, const std::string& queue, const std::string& said) {
    std::string meaning = statusText(code);
    if (code == ETIMEDOUT) {
        meaning = "Der Druckdienst CUPS antwortet nicht.";
    } else if (code < firstIppStatus) {
        meaning = "Der Druckdienst CUPS ist nicht erreichbar.";
    } else if (meaning.empty()) {
        meaning = "Fehler " + std::to_string(code) + ".";
    }
    std::string detail = (queue.empty() ? "" : "Drucker „" + queue + "“: ") + meaning;
    if (detail.back() != '.') {
        detail += '.';
    }
    if (!said.empty() && said != meaning) {
        detail += " CUPS meldet: „" + said + (said.ends_with('.') ? "“" : "“.");
    }
    return {code, detail + ' ' + advice(code, queue), recoveryFrom(code)};
}

}  // namespace platform_linux::cups
