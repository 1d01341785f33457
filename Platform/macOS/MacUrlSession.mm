#import "Platform/macOS/MacUrlSession.h"

#import <Foundation/Foundation.h>
#import <dispatch/dispatch.h>

#include <mutex>
#include <utility>

#import "Platform/macOS/Strings.h"

namespace zephyx {
namespace {

NSURLSessionConfiguration* configuration(double timeout) {
  // Ephemeral: the shared session's cache keeps requests on disk, with their headers.
  NSURLSessionConfiguration* result = NSURLSessionConfiguration.ephemeralSessionConfiguration;
  result.URLCache = nil;
  result.URLCredentialStorage = nil;
  result.HTTPCookieStorage = nil;
  result.HTTPShouldSetCookies = NO;
  // The other time-out, a request's own too, begins anew with every byte.
  result.timeoutIntervalForResource = timeout;
  result.timeoutIntervalForRequest = timeout;
  return result;
}

NSURLRequest* urlRequest(const UrlRequest& request) {
  NSURL* url = request.isWellFormed() ? [NSURL URLWithString:nsString(request.url)] : nil;
  if (!url) return nil;
  NSMutableURLRequest* result = [NSMutableURLRequest requestWithURL:url];
  result.HTTPMethod = nsString(request.method);
  result.timeoutInterval = request.timeout;
  for (const auto& [name, value] : request.headers) {
    [result setValue:nsString(value) forHTTPHeaderField:nsString(name)];
  }
  return result;
}

}  // namespace

/// Where completions pass until the session has gone.
class MacUrlSession::Gate {
 public:
  void pass(const UrlCompletion& completion, std::optional<UrlResponse> response) {
    const std::lock_guard lock(mutex_);
    if (isOpen_) completion(std::move(response));
  }

  void close() {
    const std::lock_guard lock(mutex_);
    isOpen_ = false;
  }

 private:
  std::mutex mutex_;
  bool isOpen_ = true;
};

}  // namespace zephyx

/// The delegate of one request's session. The session keeps it until the request has ended.
@interface ZephyxUrlTransfer : NSObject <NSURLSessionDataDelegate>
- (instancetype)initWithMaximumBodySize:(std::size_t)maximumBodySize
                             completion:(zephyx::UrlCompletion)completion;
@end

@implementation ZephyxUrlTransfer {
  std::size_t _maximumBodySize;
  zephyx::UrlCompletion _completion;
  NSMutableData* _body;
}

- (instancetype)initWithMaximumBodySize:(std::size_t)maximumBodySize
                             completion:(zephyx::UrlCompletion)completion {
  self = [super init];
  if (self) {
    _maximumBodySize = maximumBodySize;
    _completion = std::move(completion);
    _body = [NSMutableData data];
  }
  return self;
}

- (void)URLSession:(NSURLSession*)session
                          task:(NSURLSessionTask*)task
    willPerformHTTPRedirection:(NSHTTPURLResponse*)response
                    newRequest:(NSURLRequest*)request
             completionHandler:(void (^)(NSURLRequest*))completionHandler {
  completionHandler(nil);
}

- (void)URLSession:(NSURLSession*)session
          dataTask:(NSURLSessionDataTask*)dataTask
    didReceiveData:(NSData*)data {
  if (_body.length + data.length > _maximumBodySize) {
    [dataTask cancel];  // reported as an error
    return;
  }
  [_body appendData:data];
}

- (void)URLSession:(NSURLSession*)session
                    task:(NSURLSessionTask*)task
    didCompleteWithError:(NSError*)error {
  std::optional<zephyx::UrlResponse> response;
  if (!error && [task.response isKindOfClass:NSHTTPURLResponse.class]) {
    const auto status = static_cast<NSHTTPURLResponse*>(task.response).statusCode;
    response = zephyx::UrlResponse{static_cast<int>(status), zephyx::bytes(_body)};
  }
  _completion(std::move(response));
}

@end

namespace zephyx {

MacUrlSession::MacUrlSession() : gate_(std::make_shared<Gate>()) {}

MacUrlSession::~MacUrlSession() {
  gate_->close();
}

void MacUrlSession::start(UrlRequest request, UrlCompletion completion) {
  @autoreleasepool {
    UrlCompletion passOn =
        [gate = gate_, completion = std::move(completion)](std::optional<UrlResponse> response) {
          gate->pass(completion, std::move(response));
        };
    NSURLRequest* systemRequest = urlRequest(request);
    if (!systemRequest) {
      dispatch_async(dispatch_get_global_queue(QOS_CLASS_UTILITY, 0), ^{
        passOn(std::nullopt);
      });
      return;
    }
    ZephyxUrlTransfer* transfer =
        [[ZephyxUrlTransfer alloc] initWithMaximumBodySize:request.maximumBodySize
                                                completion:std::move(passOn)];
    // A session of its own: the limit on the whole request is a session's.
    NSURLSession* session = [NSURLSession sessionWithConfiguration:configuration(request.timeout)
                                                          delegate:transfer
                                                     delegateQueue:nil];
    [[session dataTaskWithRequest:systemRequest] resume];
    [session finishTasksAndInvalidate];  // after this request
  }
}

}  // namespace zephyx
