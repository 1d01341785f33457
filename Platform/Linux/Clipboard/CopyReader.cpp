#include "Platform/Linux/Clipboard/CopyReader.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "Platform/Linux/Clipboard/SelectionText.h"

namespace zephyx {
namespace {

int processIn(const xcb_res_query_client_ids_reply_t& reply) {
  for (auto ids = xcb_res_query_client_ids_ids_iterator(&reply); ids.rem;
       xcb_res_client_id_value_next(&ids)) {
    if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) &&
        xcb_res_client_id_value_value_length(ids.data) > 0) {
      return static_cast<int>(*xcb_res_client_id_value_value(ids.data));
    }
  }
  return 0;
}

}  // namespace

CopyReader::CopyReader(const ClipboardReading& reading, const OwnerChange& copy,
                       CopySnapshot snapshot, std::shared_ptr<const PasteboardReadPlan> plan)
    : reading_(reading), copy_(copy), snapshot_(std::move(snapshot)), plan_(std::move(plan)) {}

void CopyReader::start() {
  if (std::exchange(isStarted_, true)) return;
  // Somebody emptied the clipboard, or copied again before anything could be asked.
  if (copy_.owner == XCB_NONE || isSuperseded_) return finish();
  askForProcess();
  askForTypes();
}

void CopyReader::askForProcess() {
  auto* connection = reading_.connection.get();
  const auto* extension = xcb_get_extension_data(connection, &xcb_res_id);
  if (!extension || !extension->present) return;
  const xcb_res_client_id_spec_t owner{copy_.owner, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  processQuestion_ = xcb_res_query_client_ids(connection, 1, &owner);
}

void CopyReader::askForTypes() {
  fetchTargetNames(
      reading_, copy_,
      [self = shared_from_this()](const std::vector<std::string>& names, bool isOwnerSilent) {
        self->learnTypes(names, isOwnerSilent);
      });
}

void CopyReader::learnTypes(const std::vector<std::string>& names, bool isOwnerSilent) {
  snapshot_.isOwnerSilent = isOwnerSilent;
  snapshot_.offers = typeOffers(names);
  if (isSuperseded_ || isForbidden()) return finish();
  const auto* uriList = findOffer(snapshot_.offers, selectionTarget::uriList);
  if (!uriList) return fetchPreferred(0);
  fetchType(reading_, copy_, *uriList, [self = shared_from_this()](FetchedType fetched) {
    self->learnUriList(std::move(fetched));
  });
}

void CopyReader::learnUriList(FetchedType uriList) {
  const auto* url = uriList.payload ? std::get_if<std::string>(&*uriList.payload) : nullptr;
  if (url) {
    const std::string type = isLocalFileUrl(*url) ? pasteboardType::fileUrl : pasteboardType::url;
    nameUriList(snapshot_.offers, type);
    snapshot_.payloads[type] = std::move(*uriList.payload);
  } else {
    nameUriList(snapshot_.offers, {});
  }
  snapshot_.isOwnerSilent = uriList.isOwnerSilent;
  fetchPreferred(0);
}

void CopyReader::fetchPreferred(std::size_t first) {
  if (snapshot_.isOwnerSilent || isSuperseded_) return finish();
  for (std::size_t i = first; i < plan_->preferred.size(); ++i) {
    const auto& type = plan_->preferred[i];
    const auto* offer = findOffer(snapshot_.offers, type);
    if (!offer) continue;
    if (snapshot_.payloads.contains(type)) return finish();
    return fetchType(reading_, copy_, *offer,
                     [self = shared_from_this(), type, i](FetchedType fetched) {
                       if (fetched.payload) {
                         self->snapshot_.payloads[type] = std::move(*fetched.payload);
                         return self->finish();
                       }
                       self->snapshot_.unavailable.insert(type);
                       self->snapshot_.isOwnerSilent = fetched.isOwnerSilent;
                       self->fetchPreferred(i + 1);
                     });
  }
  finish();
}

// Whatever the plan says: what a password manager hides is not looked at.
bool CopyReader::isForbidden() const {
  const auto isOffered = [this](const std::string& type) {
    return findOffer(snapshot_.offers, type) != nullptr;
  };
  return isOffered(concealedType) ||
         std::any_of(plan_->forbidden.begin(), plan_->forbidden.end(), isOffered);
}

void CopyReader::finish() {
  isFinished_ = true;
  if (!processQuestion_) return;
  // The server answered it before it passed the first question on to the owner.
  const XReply<xcb_res_query_client_ids_reply_t> reply(
      xcb_res_query_client_ids_reply(reading_.connection.get(), *processQuestion_, nullptr));
  if (reply) snapshot_.process = processIn(*reply);
  processQuestion_.reset();
}

}  // namespace zephyx
