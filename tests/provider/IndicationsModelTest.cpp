// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// What is told, held against a model of it.

#include <filesystem>
#include <map>
#include <memory>
#include <sstream>

#include "IndicationsTest.h"
#include "RepeatableRandom.h"

using namespace Pegasus;

namespace {

const char* const _keys[] = {"typ1|nod0|ind0", "typ2|nod0|ind0"};

// What must be told, from the rules alone.
class Model {
public:
    Model(Told& told, const std::int64_t& now) : _told(told), _now(now) {}

    std::int64_t endDays[2] = {0, 0};
    std::string journal;     // the file's text
    bool isBlocked = false;  // nothing can be read from it, or written
    int count = 0;

    void enable(int provider) {
        if (++count != 1)
            return;
        _stop(provider);
        _threads[provider] = {true, true, _now + 5000};
    }
    void disable(int provider) {
        if (--count == 0)
            _stop(provider);
    }
    void destroy(int provider) { _stop(provider); }
    void advanceTo(std::int64_t end) {
        for (;;) {
            const int next = _earliest();
            if (next < 0 || _threads[next].nextCheck > end)
                break;
            _check(_threads[next].nextCheck);
            _threads[next].isFirst = false;
            _threads[next].nextCheck += HOUR;
        }
    }
    void restart() {
        _isLoaded = false;
        _last[0] = _last[1] = -1;
    }
    std::size_t threads() const {
        return std::size_t{_threads[0].isAlive} + std::size_t{_threads[1].isAlive};
    }

private:
    struct CheckingThread {
        bool isAlive = false;
        bool isFirst = false;
        std::int64_t nextCheck = 0;
    };

    void _stop(int provider) {
        if (_threads[provider].isAlive && _threads[provider].isFirst)
            _check(_now);
        _threads[provider].isAlive = false;
    }
    int _earliest() const {
        int earliest = -1;
        for (int i = 0; i < 2; ++i) {
            if (_threads[i].isAlive &&
                (earliest < 0 || _threads[i].nextCheck < _threads[earliest].nextCheck))
                earliest = i;
        }
        return earliest;
    }
    void _check(std::int64_t now) {
        for (int i = 0; i < 2; ++i) {
            const int state = endDays[i] != 0 && now / DAY > endDays[i] ? 1 : 0;
            if (state == _last[i])
                continue;
            _last[i] = state;
            if (!_isLoaded)
                _load();
            if (_states[_keys[i]] == state)
                continue;
            _states[_keys[i]] = state;
            _save();
            _told.push_back(std::string("TAVIRA_") + (i == 0 ? "Lease" : "Warranty") +
                            "ExpirationEvent " + (state == 0 ? "2" : "4"));
        }
    }

    void _load() {
        _isLoaded = true;
        _states.clear();
        std::istringstream lines(isBlocked ? std::string() : journal);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line);
            std::string key;
            int state = 0;
            if (line.size() <= 255 && words >> key >> state)
                _states.emplace(key, state);
        }
    }
    void _save() {
        if (isBlocked)
            return;
        std::ostringstream text;
        for (const auto& [key, state] : _states) {
            text << key << ' ' << state << '\n';
        }
        journal = text.str();
    }

    Told& _told;
    const std::int64_t& _now;
    CheckingThread _threads[2];
    int _last[2] = {-1, -1};
    std::map<std::string, int> _states;
    bool _isLoaded = false;
};

// A journal as nobody should leave it.
template <class UpTo>
std::string foreignJournal(UpTo upTo) {
    const std::string starts[] = {"", "", "", " ", "\t", std::string(300, 'k')};
    const std::string keys[] = {_keys[0], _keys[1], _keys[0], _keys[1], "typ9|nod0|ind0", ""};
    const std::string blanks[] = {" ", " ", "  ", "\t", ""};
    const std::string states[] = {"0", "1", "1", "+1", "-1", "7", "1x", "x", "", "99999999999"};
    const std::string ends[] = {"\n", "\n", "\r\n", " 5\n", "", std::string(300, ' ') + "\n"};
    std::ostringstream text;
    for (int line = upTo(12); line > 0; --line) {
        text << starts[upTo(6)] << keys[upTo(6)] << blanks[upTo(5)] << states[upTo(10)]
             << ends[upTo(6)];
    }
    if (upTo(10) == 0)
        text << std::string(70000, '\n') << _keys[upTo(2)] << " 1\n";
    return text.str();
}

// The providers, the file and the clock beside the model, which are told the same.
class IndicationsModelTest : public IndicationsTest {
protected:
    ~IndicationsModelTest() override { end(); }

    void begin(unsigned seed) {
        end();
        std::filesystem::remove_all(machine.folder().file("data/assetidprv.evt"));
        QZ::AssetIDProvider::forgetReported();
        setEndDays(0, 0);
        told.clear();
        expected.clear();
        now = clock.milliseconds();
        random = repeatableRandom(seed);
        model = std::make_unique<Model>(expected, now);
        for (QZ::AssetIDProvider*& one : providers) {
            one = new QZ::AssetIDProvider;
        }
    }

    void end() {
        if (model == nullptr)
            return;
        for (QZ::AssetIDProvider* const one : providers) {
            one->terminate();
        }
        for (; model->count > 0; --model->count)
            provider->disableIndications();
        for (; model->count < 0; ++model->count)
            provider->enableIndications(listener);
    }

    void step(int which) {
        switch (upTo(15)) {
            case 0:
            case 1:
                providers[which]->enableIndications(listener);
                model->enable(which);
                break;
            case 2:
                providers[which]->disableIndications();
                model->disable(which);
                break;
            case 3:
                providers[which]->terminate();
                providers[which] = new QZ::AssetIDProvider;
                model->destroy(which);
                break;
            case 4:
            case 5:
                model->endDays[which] = upTo(3) == 0 ? 0 : now / DAY + upTo(5) - 2;
                setEndDays(model->endDays[0], model->endDays[1]);
                break;
            case 6:
                QZ::AssetIDProvider::forgetReported();
                model->restart();
                break;
            case 7:
                blockOrUnblock();
                break;
            case 8:
                if (!model->isBlocked) {
                    model->journal = foreignJournal([this](unsigned end) { return upTo(end); });
                    machine.folder().write("data/assetidprv.evt", model->journal);
                }
                break;
            default: {
                const std::int64_t span = upTo(40) * HOUR / 2 + upTo(8000);
                clock.advance(span, model->threads());
                model->advanceTo(now + span);
                now += span;
            }
        }
    }

    // A folder takes the file's place.
    void blockOrUnblock() {
        namespace fs = std::filesystem;
        const std::string path = machine.folder().file("data/assetidprv.evt");
        fs::remove_all(path);
        if (model->isBlocked) {
            machine.folder().write("data/assetidprv.evt", model->journal);
        } else {
            fs::create_directory(path);
        }
        model->isBlocked = !model->isBlocked;
    }

    int upTo(unsigned end) { return static_cast<int>(random() % end); }

    std::mt19937 random = repeatableRandom(0);
    Told expected;
    std::int64_t now = 0;
    std::unique_ptr<Model> model;
    QZ::AssetIDProvider* providers[2] = {};
};

}  // namespace

TEST_F(IndicationsModelTest, TellsWhatTheModelTells) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        begin(seed);
        for (int i = 0; i < 120; ++i) {
            step(upTo(2));
            ASSERT_EQ(expected, told) << "seed " << seed << ", step " << i;
            if (!model->isBlocked) {
                ASSERT_EQ(model->journal, machine.folder().read("data/assetidprv.evt"))
                    << "seed " << seed << ", step " << i;
            }
        }
    }
}
