// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PamPasswords.h"

#include <security/pam_appl.h>

#include <cstdlib>
#include <cstring>
#include <utility>

#include "LogText.h"

namespace QZ {

namespace {

// Answers what the modules ask: the name aloud, the password in silence. Any other question would
// be for a person; its module then goes without.
int _converse(int count, const pam_message** messages, pam_response** responses, void* data) {
    const auto& login = *static_cast<const Login*>(data);
    if (count <= 0 || count > PAM_MAX_NUM_MSG) {
        return PAM_CONV_ERR;
    }
    // PAM frees it, and what is in it.
    auto* const answers =
        static_cast<pam_response*>(std::calloc(std::size_t(count), sizeof(pam_response)));
    if (!answers) {
        return PAM_BUF_ERR;
    }
    for (int i = 0; i < count; ++i) {
        if (messages[i]->msg_style == PAM_PROMPT_ECHO_OFF) {
            answers[i].resp = ::strdup(login.password.c_str());
        } else if (messages[i]->msg_style == PAM_PROMPT_ECHO_ON) {
            answers[i].resp = ::strdup(login.user.c_str());
        }
    }
    *responses = answers;
    return PAM_SUCCESS;
}

// One conversation with PAM.
class Transaction {
public:
    Transaction(const PamService& service, const Login& login)
        : _conversation{_converse, const_cast<Login*>(&login)} {
        const char* const folder = service.folder.empty() ? nullptr : service.folder.c_str();
        _result = pam_start_confdir(service.name.c_str(), login.user.c_str(), &_conversation,
                                    folder, &_handle);
        if (_result == PAM_SUCCESS) {
            _result = pam_set_item(_handle, PAM_RHOST, login.peer.c_str());
        }
    }
    ~Transaction() {
        if (_handle) {
            pam_end(_handle, _result);
        }
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    // A PAM status.
    int authenticate() {
        if (_result == PAM_SUCCESS) {
            _result = pam_authenticate(_handle, PAM_SILENT | PAM_DISALLOW_NULL_AUTHTOK);
        }
        if (_result == PAM_SUCCESS) {
            _result = pam_acct_mgmt(_handle, PAM_SILENT | PAM_DISALLOW_NULL_AUTHTOK);
        }
        return _result;
    }

    // As whom the modules know him now.
    std::string user() const {
        const void* name = nullptr;
        const int result = pam_get_item(_handle, PAM_USER, &name);
        return result == PAM_SUCCESS && name ? static_cast<const char*>(name) : "";
    }

    std::string text() const { return pam_strerror(_handle, _result); }

private:
    const pam_conv _conversation;
    pam_handle_t* _handle = nullptr;
    int _result = PAM_SUCCESS;
};

// Whether that is the user's fault, or the password's; else PAM has found out nothing.
bool _isRefusal(int result) {
    switch (result) {
        case PAM_AUTH_ERR:
        case PAM_USER_UNKNOWN:
        case PAM_MAXTRIES:
        case PAM_PERM_DENIED:
        case PAM_ACCT_EXPIRED:
        case PAM_AUTHTOK_EXPIRED:
        case PAM_CRED_INSUFFICIENT:
        case PAM_NEW_AUTHTOK_REQD:
            return true;
        default:
            return false;
    }
}

}  // namespace

PamPasswords::PamPasswords(PamService service, RightGroups groups, Log log)
    : _service(std::move(service)), _groups(std::move(groups)), _log(std::move(log)) {}

PasswordSource::Finding PamPasswords::check(const Login& login) {
    // For PAM, both end with a zero byte.
    if (login.user.empty() || login.user.find('\0') != std::string::npos ||
        login.password.find('\0') != std::string::npos) {
        return {};
    }
    Transaction transaction(_service, login);
    const int result = transaction.authenticate();
    if (result == PAM_SUCCESS) {
        return {Finding::Right, rightsOfUser(transaction.user(), _groups).value_or(Rights())};
    }
    const bool isRefusal = _isRefusal(result);
    // A wrong password is the request's line in the log.
    if (result != PAM_AUTH_ERR && result != PAM_USER_UNKNOWN) {
        _log("PAM's service " + _service.name + (isRefusal ? " refuses " : " cannot check ") +
             textForLog(login.user) + ": " + transaction.text());
    }
    return {isRefusal ? Finding::Wrong : Finding::Unknown, {}};
}

std::optional<Rights> PamPasswords::rightsOf(const std::string& user) {
    return rightsOfUser(user, _groups);
}

}  // namespace QZ
