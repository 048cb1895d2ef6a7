// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// A provider module whose classes answer, or misbehave, as their names say.

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>

#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>

using namespace Pegasus;

namespace {

CIMValue _array(const char* first, const char* second) {
    Array<String> array;
    array.append(first);
    array.append(second);
    return CIMValue(array);
}

CIMInstance _instance(const CIMObjectPath& path) {
    CIMInstance instance(path.getClassName());
    CIMObjectPath full = path;
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding("Id", CIMValue(String("one"))));
    full.setKeyBindings(keys);
    instance.setPath(full);
    instance.addProperty(CIMProperty("Id", CIMValue(String("one"))));
    return instance;
}

void _add(CIMInstance& instance, const char* name, const CIMValue& value) {
    instance.addProperty(CIMProperty(name, value));
}

CIMInstance _everything(const CIMObjectPath& path) {
    CIMInstance instance = _instance(path);
    _add(instance, "Truth", CIMValue(Boolean(true)));
    _add(instance, "U8", CIMValue(Uint8(255)));
    _add(instance, "S8", CIMValue(Sint8(-128)));
    _add(instance, "U16", CIMValue(Uint16(65535)));
    _add(instance, "S16", CIMValue(Sint16(-32768)));
    _add(instance, "U32", CIMValue(Uint32(4294967295U)));
    _add(instance, "S32", CIMValue(Sint32(-2147483647 - 1)));
    _add(instance, "U64", CIMValue(Uint64(18446744073709551615ULL)));
    _add(instance, "S64", CIMValue(Sint64(-9223372036854775807LL - 1)));
    _add(instance, "R32", CIMValue(Real32(0.1F)));
    _add(instance, "R64", CIMValue(Real64(1e300)));
    _add(instance, "Letter", CIMValue(Char16(0x00E9)));
    _add(instance, "Text", CIMValue(String("a \"quoted\", \\ line\n\x1B[31m \xE2\x82\xAC")));
    _add(instance, "Moment", CIMValue(CIMDateTime("20270131100203.000000+060")));
    _add(instance, "Duration", CIMValue(CIMDateTime("00000003020100.000000:000")));
    _add(instance, "Other", CIMValue(CIMObjectPath("TEST_Several.Number=2")));
    Array<Uint8> numbers;
    numbers.append(1);
    numbers.append(2);
    _add(instance, "Numbers", CIMValue(numbers));
    _add(instance, "Texts", _array("x", "y,z"));
    Array<CIMDateTime> moments;
    moments.append(CIMDateTime("20270131000000.000000+060"));
    _add(instance, "Moments", CIMValue(moments));
    _add(instance, "None", CIMValue(Array<Boolean>()));
    _add(instance, "Nothing", CIMValue(CIMTYPE_UINT32, false));
    return instance;
}

CIMInstance _settings(const CIMObjectPath& path) {
    CIMInstance instance = _instance(path);
    _add(instance, "Text", CIMValue(String("before")));
    _add(instance, "First", CIMValue(String("one")));
    _add(instance, "Second", CIMValue(String("two")));
    return instance;
}

// With qualifiers of its own, each of which its class has, too.
CIMInstance _qualified(const CIMObjectPath& path) {
    CIMInstance instance = _instance(path);
    instance.addQualifier(CIMQualifier("description", CIMValue(String("the provider's"))));
    instance.getProperty(0).addQualifier(CIMQualifier("KEY", CIMValue(Boolean(true))));
    return instance;
}

CIMInstance _numbered(const CIMObjectPath& path, Uint16 number) {
    CIMInstance instance(path.getClassName());
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding("Number", CIMValue(number)));
    CIMObjectPath full = path;
    full.setKeyBindings(keys);
    instance.setPath(full);
    _add(instance, "Number", CIMValue(number));
    _add(instance, "Name", CIMValue(String(number == 1 ? "first" : "second")));
    return instance;
}

// Holds whoever comes until somebody opens it.
class Gate {
public:
    void wait() {
        std::unique_lock<std::mutex> lock(_mutex);
        ++_waiting;
        _changed.notify_all();
        const unsigned until = _opened + 1;
        _changed.wait(lock, [&] { return _opened >= until; });
        --_waiting;
    }
    // As soon as somebody waits.
    void open() {
        std::unique_lock<std::mutex> lock(_mutex);
        _changed.wait(lock, [&] { return _waiting > 0; });
        ++_opened;
        _changed.notify_all();
    }

private:
    std::mutex _mutex;
    std::condition_variable _changed;
    unsigned _waiting = 0;
    unsigned _opened = 0;
};

Gate _gate;

class TestProvider : public CIMInstanceProvider {
public:
    void initialize(CIMOMHandle& handle) override { _handle = &handle; }
    void terminate() override { delete this; }

    void enumerateInstances(const OperationContext& context, const CIMObjectPath& path,
                            const Boolean, const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler& handler) override {
        const std::string name =
            std::string(path.getClassName().getString().getCString()).substr(5);
        if (name == "DeliversEarly") {
            handler.deliver(_instance(path));
        }
        handler.processing();
        if (name == "ProcessesTwice") {
            handler.processing();
        }
        _throw(name);
        _deliver(name, context, path, handler);
        if (name != "NeverCompletes") {
            handler.complete();
        }
        if (name == "CompletesTwice") {
            handler.complete();
        }
        if (name == "DeliversLate") {
            handler.deliver(_instance(path));
        }
    }

    void getInstance(const OperationContext& context, const CIMObjectPath& path, const Boolean,
                     const Boolean, const CIMPropertyList&,
                     InstanceResponseHandler& handler) override {
        const std::string name =
            std::string(path.getClassName().getString().getCString()).substr(5);
        _throw(name);
        handler.processing();
        if (path.getKeyBindings()[0].getValue() != "missing") {
            _deliver(name, context, path, handler);
        }
        handler.complete();
    }

    void enumerateInstanceNames(const OperationContext&, const CIMObjectPath& path,
                                ObjectPathResponseHandler& handler) override {
        const std::string name =
            std::string(path.getClassName().getString().getCString()).substr(5);
        _throw(name);
        handler.processing();
        if (name == "DeliversNothingness") {
            handler.deliver(CIMObjectPath());
        } else if (name == "Several") {
            handler.deliver(_numbered(path, 1).getPath());
            handler.deliver(_numbered(path, 2).getPath());
        } else if (name != "Empty") {
            handler.deliver(_instance(path).getPath());
        }
        handler.complete();
    }

    void modifyInstance(const OperationContext&, const CIMObjectPath& path,
                        const CIMInstance& instance, const Boolean, const CIMPropertyList& list,
                        ResponseHandler& handler) override {
        const std::string name =
            std::string(path.getClassName().getString().getCString()).substr(5);
        _throw(name);
        if (name == "NeverCompletes") {
            return handler.processing();
        }
        _record(path, list, instance);
    }

    // A path is delivered for "Settings" alone.
    void createInstance(const OperationContext&, const CIMObjectPath& path,
                        const CIMInstance& instance, ObjectPathResponseHandler& handler) override {
        const std::string name =
            std::string(path.getClassName().getString().getCString()).substr(5);
        _throw(name);
        _record(path, CIMPropertyList(), instance);
        handler.processing();
        if (name == "Settings") {
            handler.deliver(_instance(path).getPath());
        }
        handler.complete();
    }

    void deleteInstance(const OperationContext&, const CIMObjectPath& path,
                        ResponseHandler& handler) override {
        const std::string name =
            std::string(path.getClassName().getString().getCString()).substr(5);
        _throw(name);
        if (path.getKeyBindings()[0].getValue() == "missing") {
            throw CIMException(CIM_ERR_NOT_FOUND);
        }
        _record(path, CIMPropertyList(), CIMInstance(path.getClassName()));
        handler.processing();
        handler.complete();
    }

private:
    // Writes what was sent to the file that TAVQZ_TEST_MODIFIED names.
    static void _record(const CIMObjectPath& path, const CIMPropertyList& list,
                        const CIMInstance& instance) {
        const char* file = std::getenv("TAVQZ_TEST_MODIFIED");
        std::ofstream stream(file ? file : "");
        stream << path.toString().getCString() << "\n" << list.toString().getCString() << "\n";
        for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
            const CIMConstProperty property = instance.getProperty(i);
            stream << property.getName().getString().getCString() << " "
                   << cimTypeToString(property.getType()) << " "
                   << property.getValue().toString().getCString() << "\n";
        }
    }

    static void _throw(const std::string& name) {
        if (name == "ThrowsCim") {
            throw CIMException(CIM_ERR_ACCESS_DENIED, "not today");
        }
        if (name == "ThrowsCimSilently") {
            throw CIMException(CIM_ERR_INVALID_CLASS);
        }
        if (name == "ThrowsPegasus") {
            throw TypeMismatchException("of another type");
        }
        if (name == "ThrowsStandard") {
            throw std::runtime_error("of the library");
        }
        if (name == "ThrowsNumber") {
            throw 7;
        }
    }

    void _deliver(const std::string& name, const OperationContext& context,
                  const CIMObjectPath& path, InstanceResponseHandler& handler) {
        if (name == "Everything") {
            handler.deliver(_everything(path));
        } else if (name == "Settings") {
            handler.deliver(_settings(path));
        } else if (name == "DeliversForeign") {
            CIMInstance foreign("TEST_Nowhere");
            _add(foreign, "Id", CIMValue(String("one")));
            handler.deliver(foreign);
        } else if (name == "Qualified") {
            handler.deliver(_qualified(path));
        } else if (name == "Several") {
            Array<CIMInstance> both;
            both.append(_numbered(path, 1));
            both.append(_numbered(path, 2));
            handler.deliver(both);
        } else if (name == "AsksBack") {
            handler.deliver(_handle->enumerateInstances(context, "root/tavqz", "TEST_Several", true,
                                                        false, false, false, CIMPropertyList()));
        } else if (name == "Recurses") {
            handler.deliver(_handle->enumerateInstances(context, "root/tavqz", "TEST_Recurses",
                                                        true, false, false, false,
                                                        CIMPropertyList()));
        } else if (name == "Endless") {
            // But to those who ask for every class.
            do {
                handler.deliver(_instance(path));
            } while (std::getenv("TEST_ENDLESS") != nullptr);
        } else if (name == "Waits") {
            _record(path, CIMPropertyList(), CIMInstance(path.getClassName()));
            _gate.wait();
        } else if (name == "Releases") {
            _gate.open();
        } else if (name == "Threaded") {
            // Where nobody catches.
            std::thread([&] {
                for (Uint32 number = 0; number < 100; ++number) {
                    handler.deliver(_instance(path));
                }
            }).join();
        } else if (name == "Many") {
            for (Uint32 number = 0; number < 10000; ++number) {
                CIMInstance instance = _instance(path);
                _add(instance, "Number", CIMValue(number));
                handler.deliver(instance);
            }
        } else if (name == "ManyThenThrows") {
            for (Uint32 number = 0; number < 10000; ++number) {
                handler.deliver(_instance(path));
            }
            throw CIMException(CIM_ERR_ACCESS_DENIED, "enough");
        } else if (name == "Prints") {
            std::printf("printed by the module\n");
            handler.deliver(_instance(path));
        } else if (name == "DeliversNothingness") {
            handler.deliver(CIMInstance());
        } else if (name != "Empty") {
            handler.deliver(_instance(path));
        }
    }

    CIMOMHandle* _handle = nullptr;
};

class OtherKindOfProvider : public CIMProvider {
public:
    void initialize(CIMOMHandle&) override {}
    void terminate() override { delete this; }
};

class ThrowingProvider : public TestProvider {
public:
    void initialize(CIMOMHandle&) override { throw std::runtime_error("cannot begin"); }
};

}  // namespace

extern "C" PEGASUS_EXPORT CIMProvider* PegasusCreateProvider(const String& name) {
    if (name == "TestProvider") {
        return new TestProvider;
    }
    if (name == "OtherKindOfProvider") {
        return new OtherKindOfProvider;
    }
    if (name == "ThrowingProvider") {
        return new ThrowingProvider;
    }
    return nullptr;
}
