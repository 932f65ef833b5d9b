#include "live/GuestHttp.h"

#include "live/GuestSite.h"
#include "live/GuestStream.h"

#include <string>

namespace kalvo {

namespace {

constexpr const char* kWishPath = "/wunsch";

QByteArray Bytes(const std::string& text) {
    return QByteArray::fromStdString(text);
}

QHash<QByteArray, QByteArray> CookiesOf(const QByteArray& header) {
    QHash<QByteArray, QByteArray> cookies;
    const QList<QByteArray> pairs = header.split(';');
    for (const QByteArray& pair : pairs) {
        if (const auto at = pair.indexOf('='); at > 0)
            cookies.insert(pair.left(at).trimmed(), pair.mid(at + 1).trimmed());
    }
    return cookies;
}

GuestRequest RequestOf(const httplib::Request& http) {
    GuestRequest request;
    request.post = http.method == "POST";
    request.path = Bytes(http.path);
    for (const auto& [name, value] : http.params)
        request.fields.insert(Bytes(name), QString::fromStdString(value));
    request.cookies = CookiesOf(Bytes(http.get_header_value("Cookie")));
    request.address = Bytes(http.remote_addr);
    request.host = Bytes(http.get_header_value("Host"));
    request.origin = Bytes(http.get_header_value("Origin"));
    request.accepted = Bytes(http.get_header_value("Accept-Language"));
    request.byScript = http.has_header("X-Kalvo");
    return request;
}

void Give(const GuestResponse& given, httplib::Response& response) {
    response.status = given.status;
    for (const auto& [name, value] : given.headers)
        response.set_header(name.toStdString(), value.toStdString());
    response.set_content(given.body.toStdString(), given.type.toStdString());
}

/** 0 when the request may go on, else the status of its answer. */
int Refusal(const httplib::Request& request) {
    const bool form = request.method == "POST";
    if (!form && request.method != "GET" && request.method != "HEAD")
        return 405;
    if (request.get_header_value_count("Content-Length") > 1)
        return 400;
    const std::string length = request.get_header_value("Content-Length");
    if (length.empty() || length == "0")
        return 0;
    if (!form || length.find_first_not_of("0123456789") != std::string::npos)
        return 400;
    return length.size() > 4 || std::stoul(length) > GuestStream::kLargestBody ? 413 : 0;
}

/** What no page of ours needs, and what a parser can be led astray by: lengths told twice, packed bodies, many ranges.
 */
bool NeedsCare(const GuestStream& stream) {
    return stream.HeadHas("transfer-encoding") || stream.HeadHas("content-encoding") || stream.HeadHas("range");
}

void Refuse(GuestStream& stream, const char* status) {
    stream.write(std::string("HTTP/1.1 ") + status + "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
}

} // namespace

/** The HTTP library, given connections of ours instead of its own. */
class GuestHttp::Parser : public httplib::Server {
public:
    explicit Parser(GuestSite& site) {
        set_payload_max_length(GuestStream::kLargestBody);
        set_pre_routing_handler([&site](const httplib::Request& request, httplib::Response& response) {
            if (const int status = Refusal(request); status != 0) {
                response.status = status;
                return HandlerResponse::Handled;
            }
            if (request.method == "POST" && request.path == kWishPath)
                return HandlerResponse::Unhandled; // its body is still to be read
            Give(site.Answer(RequestOf(request)), response);
            return HandlerResponse::Handled;
        });
        Post(kWishPath, [&site](const httplib::Request& request, httplib::Response& response) {
            Give(site.Answer(RequestOf(request)), response);
        });
    }

    void Serve(GuestStream& stream) {
        bool closed = false;
        process_request(stream, true, closed, nullptr);
    }
};

GuestHttp::GuestHttp(GuestSite& site, const GuestHttpLimits& limits)
    : limits_(limits),
      parser_(std::make_unique<Parser>(site)),
      connections_([this](int socket) { Serve(socket); }, limits.connections) {}

GuestHttp::~GuestHttp() = default;

void GuestHttp::Serve(int socket) {
    GuestStream stream(socket, GuestStream::Clock::now() + limits_.request);
    const GuestStream::Head head = stream.ReadHead();
    if (head == GuestStream::Head::Late || head == GuestStream::Head::Closed)
        return;
    const bool parses = head == GuestStream::Head::Complete && !NeedsCare(stream);
    if (parses)
        parser_->Serve(stream);
    else
        Refuse(stream, head == GuestStream::Head::TooLarge ? "431 Request Header Fields Too Large" : "400 Bad Request");
    if (!parses || stream.HeadHas("content-length"))
        stream.Finish();
}

} // namespace kalvo
