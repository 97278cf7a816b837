// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QTest>

#include <algorithm>
#include <random>
#include <utility>
#include <vector>

using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

namespace {

/** What UIElement promises about lists, parents and deaths, written down without any index. */
class PlainForest {
public:
    struct Element {
        std::vector<std::size_t> children;
        int parent = -1;
        bool isAlive = true;
    };

    explicit PlainForest(std::size_t size)
        : m_elements(size) {}

    const Element& at(std::size_t element) const { return m_elements[element]; }

    std::vector<std::size_t> alive() const {
        std::vector<std::size_t> result;
        for (std::size_t i = 0; i < m_elements.size(); ++i) {
            if (m_elements[i].isAlive) {
                result.push_back(i);
            }
        }
        return result;
    }

    /** True when the child was not there before. */
    bool addChild(std::size_t parent, std::size_t child) {
        std::vector<std::size_t>& children = m_elements[parent].children;
        if (std::find(children.begin(), children.end(), child) != children.end()) {
            return false;
        }
        children.push_back(child);
        if (m_elements[child].parent == -1) {
            m_elements[child].parent = static_cast<int>(parent);
        }
        return true;
    }

    void destroy(std::size_t element) {
        if (!m_elements[element].isAlive) {
            return;
        }
        m_elements[element].isAlive = false;
        for (Element& other : m_elements) {
            std::vector<std::size_t>& listed = other.children;
            listed.erase(std::remove(listed.begin(), listed.end(), element), listed.end());
        }
        for (const std::size_t child : std::exchange(m_elements[element].children, {})) {
            destroy(child);
        }
    }

private:
    std::vector<Element> m_elements;
};

/** The same elements as a PlainForest, for real, and how often each of them died. */
struct RealForest {
    explicit RealForest(std::size_t size)
        : deaths(size, 0) {
        for (std::size_t i = 0; i < size; ++i) {
            elements.push_back(new UIElement(QString(), StandardType(), QString()));
            QObject::connect(elements.back(), &QObject::destroyed, [this, i] { ++deaths[i]; });
            QObject::connect(elements.back(), &UIElement::childAdded, [this] { ++announced; });
        }
    }

    std::vector<UIElement*> elements;
    std::vector<int> deaths;
    int announced = 0;
};

/** Nothing when both are the same, else what differs. */
QString difference(const PlainForest& plain, const RealForest& real) {
    for (std::size_t i = 0; i < real.elements.size(); ++i) {
        const PlainForest::Element& expected = plain.at(i);
        if (real.deaths[i] != (expected.isAlive ? 0 : 1)) {
            return QStringLiteral("element %1 died %2 times").arg(i).arg(real.deaths[i]);
        }
        if (!expected.isAlive) {
            continue;
        }
        QList<UIElement*> children;
        for (const std::size_t child : expected.children) {
            children.append(real.elements[child]);
        }
        if (real.elements[i]->children() != children) {
            return QStringLiteral("element %1 has other children").arg(i);
        }
        const UIElement* parent = expected.parent < 0
                                      ? nullptr
                                      : real.elements[static_cast<std::size_t>(expected.parent)];
        if (real.elements[i]->parent() != parent) {
            return QStringLiteral("element %1 has another parent").arg(i);
        }
    }
    return {};
}

} // namespace

/** Random histories of adding and deleting, cycles included, against a plain model. */
class tst_UIElementHistory : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void behavesAsPlainModel_data();
    void behavesAsPlainModel();
};

void tst_UIElementHistory::behavesAsPlainModel_data() {
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 60; ++seed) {
        QTest::addRow("seed %u", seed) << seed;
    }
}

void tst_UIElementHistory::behavesAsPlainModel() {
    QFETCH(quint32, seed);
    constexpr std::size_t size = 24;
    std::mt19937 random(seed);
    PlainForest plain(size);
    RealForest real(size);
    int expected = 0;
    std::vector<std::size_t> alive = plain.alive();
    for (int step = 0; step < 200 && !alive.empty(); ++step) {
        const std::size_t element = alive[random() % alive.size()];
        if (random() % 12 == 0) {
            plain.destroy(element);
            delete real.elements[element];
        } else {
            const std::size_t child = alive[random() % alive.size()];
            expected += plain.addChild(element, child) ? 1 : 0;
            real.elements[element]->addChild(real.elements[child]);
        }
        QCOMPARE(difference(plain, real), QString());
        QCOMPARE(real.announced, expected);
        alive = plain.alive();
    }
    for (; !alive.empty(); alive = plain.alive()) {
        plain.destroy(alive.front());
        delete real.elements[alive.front()];
        QCOMPARE(difference(plain, real), QString());
    }
}

QTEST_GUILESS_MAIN(tst_UIElementHistory)
#include "tst_uielementhistory.moc"
