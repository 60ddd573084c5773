#include "indexing/TopicTable.h"

#include <QStringView>
#include <algorithm>
#include <initializer_list>

namespace
{
struct Row {
    QStringView name;
    bool flag;
    std::initializer_list<QStringView> keywords;
};

// clang-format off
const Row kRows[] = {
    {u"Logic & Foundations", false, {u"mathematical logic", u"set theory", u"model theory", u"recursion theory", u"proof theory"}},
    {u"Combinatorics", false, {u"combinatorics", u"graph theory", u"enumerative combinatorics", u"poset", u"generating function"}},
    {u"Number Theory", false, {u"number theory", u"diophantine", u"modular form", u"prime number", u"zeta function", u"arithmetic geometry"}},
    {u"Commutative Algebra", false, {u"commutative algebra", u"noetherian ring", u"groebner basis", u"homological algebra"}},
    {u"Algebraic Geometry", true, {u"algebraic geometry", u"algebraic variety", u"scheme theory", u"sheaf theory", u"cohomology"}},
    {u"Linear Algebra", false, {u"linear algebra", u"eigenvalue", u"vector space", u"matrix theory", u"inner product"}},
    {u"Group Theory", false, {u"group theory", u"sylow theorem", u"lie group", u"abelian group", u"representation theory"}},
    {u"Analysis", false, {u"real analysis", u"complex analysis", u"measure theory", u"holomorphic", u"functional analysis", u"banach space"}},
    {u"Differential Equations", false, {u"differential equation", u"pde", u"ode", u"boundary value problem", u"laplacian"}},
    {u"Geometry", false, {u"differential geometry", u"riemannian", u"manifold", u"symplectic", u"convex geometry"}},
    {u"Topology", false, {u"topology", u"homeomorphism", u"homotopy", u"fundamental group", u"knot theory", u"compactness"}},
    {u"Probability & Statistics", false, {u"probability theory", u"stochastic", u"statistics", u"bayesian", u"markov chain", u"random variable"}},
    {u"Computer Science", false, {u"computer science", u"algorithms", u"computational complexity", u"data structures", u"cryptography"}},
    {u"AI & Machine Learning", false, {u"machine learning", u"neural network", u"artificial intelligence", u"deep learning", u"reinforcement learning"}},
    {u"Transformer Models", false, {u"transformer model", u"attention mechanism", u"self-attention", u"bert", u"gpt-4", u"llama"}},
    {u"Large Language Models", false, {u"large language model", u"llm", u"rlhf", u"prompt engineering", u"chain-of-thought"}},
};
// clang-format on

/// The row's keywords, numbered from `number` on; one whose expression does not compile is left out.
std::vector<TopicKeyword> compiled(const Row &row, size_t number)
{
    std::vector<TopicKeyword> keywords;
    for (const QStringView keyword : row.keywords) {
        const QString pattern = u"\\b" + QRegularExpression::escape(keyword) + u"\\b";
        QRegularExpression expression(pattern, QRegularExpression::CaseInsensitiveOption |
                                                   QRegularExpression::UseUnicodePropertiesOption);
        if (expression.isValid())
            keywords.push_back({keyword.toString(), std::move(expression), number++});
    }
    return keywords;
}

std::vector<Topic> compiledTable()
{
    std::vector<Topic> topics;
    size_t number = 0;
    for (const Row &row : kRows) {
        topics.push_back({row.name.toString(), row.flag, compiled(row, number)});
        number += topics.back().keywords.size();
    }
    return topics;
}
} // namespace

const std::vector<Topic> &topicTable()
{
    static const std::vector<Topic> topics = compiledTable();
    return topics;
}

size_t topicKeywordCount()
{
    return topicTable().back().keywords.back().number + 1;
}

bool isTopicName(const QString &tag)
{
    const std::vector<Topic> &topics = topicTable();
    return std::any_of(topics.begin(), topics.end(), [&](const Topic &topic) { return topic.name == tag; });
}
