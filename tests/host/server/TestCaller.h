// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "BuildPaths.h"
#include "InProcessServer.h"
#include "MofParser.h"
#include "RequestHandler.h"
#include "Text.h"
#include "XmlTree.h"

// An answer that is kept.
class MemoryReply : public QZ::HttpReply {
public:
    void setStatus(int status) override { answer.status = status; }
    void addHeader(const std::string& name, const std::string& value) override {
        answer.headers.emplace_back(name, value);
    }
    void write(std::string_view bytes) override {
        answer.body += bytes;
        written += bytes.size();
        // What a connection would have sent by now.
        if (answer.body.size() > startsAt) {
            started = true;
            answer.body.clear();
        }
    }
    bool isStarted() const override { return started; }
    void discard(const QZ::HttpHeaders& given) override {
        started ? void(trailers = given) : void(answer = {});
    }
    void setLateAnswer(std::function<QZ::HttpAnswer(Late why)> make) override {
        late = std::move(make);
    }
    void setTrailerNames(const std::string& names) override { trailerNames = names; }
    void setLogText(const std::string& text) override { logText = text; }

    std::string header(const std::string& name) const {
        for (const auto& [key, value] : answer.headers) {
            if (QZ::sameName(key, name)) {
                return value;
            }
        }
        return "(none)";
    }

    QZ::HttpAnswer answer;
    QZ::HttpHeaders trailers;
    std::function<QZ::HttpAnswer(Late why)> late;
    std::string trailerNames;
    std::string logText;
    std::size_t written = 0;
    std::size_t startsAt = std::size_t(1) << 30;
    bool started = false;
};

// What a call came to: the elements of IRETURNVALUE, the output parameters, or an error.
struct CallResult {
    int error = 0;
    std::string description;
    bool returnsSomething = false;
    std::vector<QZ::XmlElement> values;
    std::vector<std::pair<std::string, std::string>> parameters;

    std::string parameter(const std::string& name) const {
        for (const auto& [key, value] : parameters) {
            if (key == name) {
                return value;
            }
        }
        return "(none)";
    }
};

// A server with the test module, or with those that are shipped, and a client of it.
class TestCaller {
public:
    enum Module { OfTests, Shipped };

    explicit TestCaller(Module module = OfTests, QZ::RequestHandler::Limits limits = {})
        : _providers(_schema(module),
                     [module](const std::string& library) {
                         return module == OfTests ? std::string(TEST_MODULE)
                                                  : TAVQZ_BINARY_DIR "/lib/lib" + library + ".so";
                     }),
          handler(_providers, limits) {}

    // The request that a client sends; parameters are IPARAMVALUE elements.
    static QZ::HttpRequest request(const std::string& method, const std::string& parameters,
                                   const std::string& space = "root/tavqz") {
        QZ::HttpRequest request;
        request.method = "POST";
        request.target = "/cimom";
        request.headers = {{"Content-Type", "application/xml; charset=utf-8"},
                           {"CIMOperation", "MethodCall"},
                           {"CIMMethod", method},
                           {"CIMObject", space}};
        request.caller = {"tester", QZ::Rights::all(), QZ::Caller::Password};
        std::string path;
        for (std::size_t begin = 0; begin <= space.size();) {
            const std::size_t end = std::min(space.find('/', begin), space.size());
            path += "<NAMESPACE NAME=\"" + space.substr(begin, end - begin) + "\"/>";
            begin = end + 1;
        }
        request.body =
            "<?xml version=\"1.0\" encoding=\"utf-8\"?><CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">"
            "<MESSAGE ID=\"42\" PROTOCOLVERSION=\"1.0\"><SIMPLEREQ><IMETHODCALL NAME=\"" +
            method + "\"><LOCALNAMESPACEPATH>" + path + "</LOCALNAMESPACEPATH>" + parameters +
            "</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>";
        return request;
    }

    // The same as it goes over a connection, which ends with its answer.
    static std::string bytesOf(const QZ::HttpRequest& request) {
        std::string bytes = request.method + " " + request.target + " HTTP/1.1\r\n";
        bytes.append("Host: a\r\nConnection: close\r\n");
        for (const auto& [name, value] : request.headers) {
            bytes.append(name).append(": ").append(value).append("\r\n");
        }
        bytes.append("Content-Length: ").append(std::to_string(request.body.size()));
        return bytes.append("\r\n\r\n").append(request.body);
    }

    CallResult call(const std::string& method, const std::string& parameters,
                    const std::string& space = "root/tavqz") {
        MemoryReply reply;
        handler.handle(request(method, parameters, space), reply);
        return result(method, reply.answer.body);
    }

    static CallResult result(const std::string& method, const std::string& body) {
        using QZ::XmlElement;
        const XmlElement root = QZ::parseXml(body, QZ::XmlLimits{64, 10'000'000});
        const XmlElement& message = root.children.at(0);
        const XmlElement& response = message.children.at(0).children.at(0);
        CallResult result;
        if (*message.attribute("ID") != "42" || *response.attribute("NAME") != method) {
            throw std::runtime_error("an answer to another call: " + body);
        }
        for (const XmlElement& child : response.children) {
            if (child.name == "ERROR") {
                result.error = std::stoi(*child.attribute("CODE"));
                const std::string* const text = child.attribute("DESCRIPTION");
                result.description = text ? *text : "";
            } else if (child.name == "IRETURNVALUE") {
                result.returnsSomething = true;
                result.values = child.children;
            } else {
                result.parameters.emplace_back(*child.attribute("NAME"), child.children.at(0).text);
            }
        }
        return result;
    }

    // Parameters.
    static std::string className(const std::string& name, const char* parameter = "ClassName") {
        return std::string("<IPARAMVALUE NAME=\"") + parameter + "\"><CLASSNAME NAME=\"" + name +
               "\"/></IPARAMVALUE>";
    }
    static std::string value(const char* parameter, const std::string& text) {
        return std::string("<IPARAMVALUE NAME=\"") + parameter + "\"><VALUE>" + text +
               "</VALUE></IPARAMVALUE>";
    }
    static std::string properties(const std::vector<std::string>& names) {
        std::string xml = "<IPARAMVALUE NAME=\"PropertyList\"><VALUE.ARRAY>";
        for (const std::string& name : names) {
            xml += "<VALUE>" + name + "</VALUE>";
        }
        return xml + "</VALUE.ARRAY></IPARAMVALUE>";
    }
    static std::string instanceName(const std::string& xml) {
        return "<IPARAMVALUE NAME=\"InstanceName\">" + xml + "</IPARAMVALUE>";
    }
    static std::string named(const std::string& className, const std::string& key,
                             const std::string& value) {
        return "<INSTANCENAME CLASSNAME=\"" + className + "\"><KEYBINDING NAME=\"" + key +
               "\"><KEYVALUE VALUETYPE=\"string\">" + value +
               "</KEYVALUE></KEYBINDING></INSTANCENAME>";
    }

    // "Id, Common" of the INSTANCE that an element is or holds.
    static std::string propertyNames(const QZ::XmlElement& element) {
        const QZ::XmlElement* const inner = element.child("INSTANCE");
        std::string names;
        for (const QZ::XmlElement& child : (inner ? *inner : element).children) {
            if (child.name.rfind("PROPERTY", 0) == 0) {
                names += (names.empty() ? "" : ", ") + *child.attribute("NAME");
            }
        }
        return names;
    }

private:
    static QZ::Schema _schema(Module module) {
        const std::string shipped = TAVQZ_SOURCE_DIR "/schema";
        QZ::Schema schema = QZ::Schema::load(module == OfTests ? TEST_SCHEMA : shipped);
        if (module == OfTests) {
            schema.interop.add(QZ::parseMofFile(shipped + "/interop/interop.mof"));
        }
        return schema;
    }

    QZ::InProcessServer _providers;

public:
    QZ::RequestHandler handler;
};
