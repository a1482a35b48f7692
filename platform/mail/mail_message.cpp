#include "platform/mail/mail_message.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>

#include "platform/archive/archive_writer.h"
#include "platform/files/files.h"
#include "platform/files/native_path.h"
#include "platform/files/private_folder.h"
#include "platform/files/whole_file.h"
#include "platform/text/letters.h"
#include "platform/text/utf.h"
#include "platform/text/xml_text.h"

namespace platform {

namespace {

constexpr const char* anyType = "application/octet-stream";
constexpr const char* archiveType = "application/zip";

const char* contentTypeOf(const std::wstring& name) {
  constexpr struct {
    const wchar_t* ending;
    const char* type;
  } types[] = {{L".TXT", "text/plain"}, {L".LOG", "text/plain"},      {L".XML", "application/xml"},
               {L".ZIP", archiveType},  {L".PDF", "application/pdf"}, {L".PNG", "image/png"},
               {L".JPG", "image/jpeg"}, {L".DWG", "image/vnd.dwg"},   {L".DXF", "image/vnd.dxf"}};
  const std::wstring upper = upperCased(name);
  const auto found = std::find_if(std::begin(types), std::end(types),
                                  [&](const auto& each) { return upper.ends_with(each.ending); });
  return found == std::end(types) ? anyType : found->type;
}

}  // namespace

MailMessage::MailMessage() = default;
MailMessage::~MailMessage() = default;

bool MailMessage::failed(const char* step, const std::string& file, const std::string& reason) {
  lastError_ = "  <step>" + std::string(step) + "</step>\n  <file>" + xmlText(file) + "</file>\n  <words>" +
               xmlText(reason) + "</words>\n";
  return false;
}

void MailMessage::addRecipient(const std::wstring& name, const std::wstring& address) {
  recipients_.push_back({name, address});
}

bool MailMessage::addFile(const std::wstring& path, std::wstring& contentType) {
  const std::string file = nativePath(path);
  const int descriptor = openPlainFile(file);
  if (descriptor < 0)
    return failed("add file", file, folderExists(path) ? "is a folder" : std::strerror(errno));
  close(descriptor);
  const std::wstring name = fromUtf8(splitPath(file).name);
  const char* const type = contentTypeOf(name);
  contentType = fromUtf8(type);
  attachments_.push_back({file, name, type});
  return true;
}

bool MailMessage::compressAttachments(const std::wstring& archiveName) {
  auto folder = std::make_unique<PrivateFolder>(nativePath(temporaryFolder()));
  const std::string archive = folder->path() + "/attachments.zip";
  ArchiveWriter writer;
  writer.setMendNames(true);
  bool written = folder->good() && writer.create(fromUtf8(archive));
  for (const Attachment& each : attachments_) written = written && writer.append(fromUtf8(each.file), false);
  if (!written || !writer.writeAndClose()) return failed("compress", toUtf8(archiveName), writer.lastError());
  attachments_ = {{archive, archiveName, archiveType}};
  archiveFolder_ = std::move(folder);
  return true;
}

void MailMessage::clear() {
  subject_.clear();
  text_.clear();
  sender_ = {};
  recipients_.clear();
  attachments_.clear();
  archiveFolder_.reset();
  lastError_.clear();
}

bool MailMessage::saveLastError(const std::wstring& file) const {
  WholeFile report(nativePath(file));
  report.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<error>\n" + lastError_ + "</error>\n");
  return report.commit();
}

}  // namespace platform
