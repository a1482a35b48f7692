#include "platform/mail/mail_transport.h"

#include <curl/curl.h>

#include <array>
#include <cstring>
#include <vector>

#include "platform/files/native_path.h"
#include "platform/files/whole_file.h"
#include "platform/mail/conversation.h"
#include "platform/mail/encodings.h"
#include "platform/mail/headers.h"
#include "platform/mail/mail_stream.h"
#include "platform/text/utf.h"
#include "platform/text/xml_text.h"

namespace platform {

namespace {

/// How long the library waits at most before someone is told of the progress again.
constexpr int pauseInMilliseconds = 50;
constexpr std::chrono::milliseconds pause{pauseInMilliseconds};

bool startLibrary() {
  static const bool started = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
  return started;
}

template <class Handle, auto release>
struct Releaser {
  void operator()(Handle* handle) const { release(handle); }
};
template <class Handle, auto release>
using Owned = std::unique_ptr<Handle, Releaser<Handle, release>>;
using OwnedList = Owned<curl_slist, curl_slist_free_all>;

size_t discard(char*, size_t size, size_t count, void*) { return size * count; }

int record(CURL*, curl_infotype type, char* bytes, size_t size, void* context) {
  Conversation& conversation = *static_cast<Conversation*>(context);
  if (type == CURLINFO_HEADER_OUT) conversation.addSent({bytes, size});
  if (type == CURLINFO_HEADER_IN) conversation.addReceived({bytes, size});
  return 0;
}

}  // namespace

struct MailTransport::State {
  // The connection lives in the handle of several transfers, so it must outlive that of one.
  Owned<CURLM, curl_multi_cleanup> connections;
  Owned<CURL, curl_easy_cleanup> curl;
  std::array<char, CURL_ERROR_SIZE> words{};
  MailLimits limits;
  std::string server, account, password, trustFile;
  int port = 587;
  MailProgress* progress = nullptr;
  Conversation conversation;
  std::string report;

  // Of the transfer that runs.
  MailStream* stream = nullptr;
  int64_t sent = 0;
  bool isStopped = false;
  std::chrono::steady_clock::time_point nextLook;

  std::string place() const { return server + ":" + std::to_string(port); }
  bool failed(const std::string& step, int code, const std::string& reason);
  bool open();
  template <class Value>
  bool set(CURLoption option, Value value) {
    return curl_easy_setopt(curl.get(), option, value) == CURLE_OK;
  }
  bool prepare();
  bool prepareSecurity();
  bool run();
  CURLcode perform();
  void lookAround();

  static size_t give(char* buffer, size_t size, size_t count, void* context);
  static int goOn(void* context, curl_off_t, curl_off_t, curl_off_t, curl_off_t);
};

bool MailTransport::State::failed(const std::string& step, int code, const std::string& reason) {
  const auto element = [](const char* name, const std::string& text) {
    return "  <" + std::string(name) + ">" + xmlText(text) + "</" + name + ">\n";
  };
  report = element("step", step) + element("server", place()) + element("code", std::to_string(code)) +
           element("words", conversation.masked(reason)) + element("lastAnswer", conversation.lastAnswer()) +
           "  <conversation>\n" + conversation.toXml() + "  </conversation>\n";
  return false;
}

bool MailTransport::State::open() {
  if (curl) return true;
  if (startLibrary()) {
    connections.reset(curl_multi_init());
    curl.reset(curl_easy_init());
  }
  return (connections && curl) || failed("connect", CURLE_FAILED_INIT, "the mail library can't be started");
}

// The read callback alone may end a transfer half way: where the handle is just taken away, the library
// closes the message properly, and the server would take the half for the whole.
size_t MailTransport::State::give(char* buffer, size_t size, size_t count, void* context) {
  State& state = *static_cast<State*>(context);
  const std::optional<size_t> given =
      state.isStopped ? std::nullopt : state.stream->read(buffer, size * count);
  if (!given) return CURL_READFUNC_ABORT;
  state.sent += static_cast<int64_t>(*given);
  return *given;
}

// The library calls this wherever it waits.
int MailTransport::State::goOn(void* context, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
  State& state = *static_cast<State*>(context);
  state.lookAround();
  return state.isStopped ? 1 : 0;
}

bool MailTransport::State::prepareSecurity() {
  const bool usesOwnTrust = !trustFile.empty();
  return set(CURLOPT_USE_SSL, long{CURLUSESSL_ALL}) && set(CURLOPT_SSL_VERIFYPEER, 1L) &&
         set(CURLOPT_SSL_VERIFYHOST, 2L) && set(CURLOPT_SSLVERSION, long{CURL_SSLVERSION_TLSv1_2}) &&
         (!usesOwnTrust || (set(CURLOPT_CAINFO, trustFile.c_str()) && set(CURLOPT_CAPATH, nullptr)));
}

// All options of one transfer; connections that are open stay so.
bool MailTransport::State::prepare() {
  curl_easy_reset(curl.get());
  words[0] = '\0';
  const long connect = limits.connect.count(), answer = limits.answer.count();
  return set(CURLOPT_URL, ("smtp://" + place()).c_str()) && set(CURLOPT_PROTOCOLS_STR, "smtp") &&
         set(CURLOPT_NOSIGNAL, 1L) && set(CURLOPT_ERRORBUFFER, words.data()) && prepareSecurity() &&
         (account.empty() ||
          (set(CURLOPT_USERNAME, account.c_str()) && set(CURLOPT_PASSWORD, password.c_str()))) &&
         set(CURLOPT_CONNECTTIMEOUT, connect) && set(CURLOPT_SERVER_RESPONSE_TIMEOUT, answer) &&
         set(CURLOPT_LOW_SPEED_LIMIT, 1L) && set(CURLOPT_LOW_SPEED_TIME, answer) &&
         set(CURLOPT_VERBOSE, 1L) && set(CURLOPT_DEBUGFUNCTION, &record) &&
         set(CURLOPT_DEBUGDATA, &conversation) && set(CURLOPT_WRITEFUNCTION, &discard) &&
         set(CURLOPT_NOPROGRESS, 0L) && set(CURLOPT_XFERINFOFUNCTION, &goOn) &&
         set(CURLOPT_XFERINFODATA, this);
}

void MailTransport::State::lookAround() {
  const auto now = std::chrono::steady_clock::now();
  if (now < nextLook) return;
  nextLook = now + pause;
  if (progress && !progress->sending(sent, stream ? stream->size() : 0)) isStopped = true;
}

CURLcode MailTransport::State::perform() {
  if (curl_multi_add_handle(connections.get(), curl.get()) != CURLM_OK) return CURLE_FAILED_INIT;
  CURLcode result = CURLE_FAILED_INIT;
  int running = 1;
  while (running != 0 && curl_multi_perform(connections.get(), &running) == CURLM_OK) {
    if (running != 0) curl_multi_poll(connections.get(), nullptr, 0, pauseInMilliseconds, nullptr);
  }
  int left = 0;
  while (const CURLMsg* const message = curl_multi_info_read(connections.get(), &left)) {
    if (message->msg == CURLMSG_DONE) result = message->data.result;
  }
  curl_multi_remove_handle(connections.get(), curl.get());
  return result;
}

bool MailTransport::State::run() {
  isStopped = false;
  sent = 0;
  for (const std::string& each : {password, base64(password), base64(account),
                                  base64(std::string(1, '\0') + account + '\0' + password)})
    conversation.keepSecret(password.empty() ? "" : each);
  const CURLcode result = perform();
  if (result == CURLE_OK) return true;
  std::string reason = words[0] ? words.data() : curl_easy_strerror(result);
  if (stream && !stream->problem().empty()) reason = stream->problem();
  return failed(conversation.step(), result, reason);
}

MailTransport::MailTransport(const MailLimits& limits) : state_(std::make_unique<State>()) {
  state_->limits = limits;
}
MailTransport::~MailTransport() = default;

void MailTransport::setServer(const std::wstring& host) { state_->server = toUtf8(host); }
void MailTransport::setAccount(const std::wstring& account) { state_->account = toUtf8(account); }
void MailTransport::setPassword(const std::wstring& password) { state_->password = toUtf8(password); }
void MailTransport::setPort(int port) { state_->port = port; }
void MailTransport::setTrustFile(const std::wstring& path) { state_->trustFile = nativePath(path); }
void MailTransport::setProgress(MailProgress* progress) { state_->progress = progress; }

bool MailTransport::verifyConnection() {
  State& state = *state_;
  state.stream = nullptr;
  if (!state.open()) return false;
  if (!state.prepare() || !state.set(CURLOPT_NOBODY, 1L) || !state.set(CURLOPT_CUSTOMREQUEST, "NOOP"))
    return state.failed("connect", CURLE_FAILED_INIT, "the server's name or an option can't be used");
  return state.run();
}

bool MailTransport::send(const MailMessage& message) {
  State& state = *state_;
  const auto sender = mailAddress(message.sender().address);
  if (!sender) return state.failed("sender", 0, "no address: " + toUtf8(message.sender().address));
  OwnedList recipients;
  for (const MailMessage::Mailbox& each : message.recipients()) {
    const auto address = mailAddress(each.address);
    if (!address) return state.failed("recipient", 0, "no address: " + toUtf8(each.address));
    curl_slist* const longer = curl_slist_append(recipients.get(), ("<" + *address + ">").c_str());
    recipients.release();
    recipients.reset(longer);
  }
  if (!recipients) return state.failed("recipient", 0, "there is none");
  MailStream stream(message);
  if (stream.size() < 0) return state.failed("message", 0, stream.problem());
  if (!state.open()) return false;
  state.stream = &stream;
  const bool sent =
      (state.prepare() && state.set(CURLOPT_MAIL_FROM, ("<" + *sender + ">").c_str()) &&
       state.set(CURLOPT_MAIL_RCPT, recipients.get()) && state.set(CURLOPT_UPLOAD, 1L) &&
       state.set(CURLOPT_READFUNCTION, &State::give) && state.set(CURLOPT_READDATA, &state) &&
       state.set(CURLOPT_INFILESIZE_LARGE, curl_off_t{stream.size()}))
          ? state.run()
          : state.failed("connect", CURLE_FAILED_INIT, "the server's name or an option can't be used");
  state.stream = nullptr;
  return sent;
}

void MailTransport::close() {
  state_->curl.reset();
  state_->connections.reset();
  state_->conversation.clear();
}

bool MailTransport::saveLastError(const std::wstring& file) const {
  WholeFile target(nativePath(file));
  target.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<error>\n" + state_->report + "</error>\n");
  return target.commit();
}

}  // namespace platform
