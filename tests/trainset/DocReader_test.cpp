#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "trainset/DirDocReader.h"
#include "trainset/FilteredDocReader.h"
#include "trainset/LineDocReader.h"
#include "trainset/XMLFileDocReader.h"

using namespace vortm;
using namespace vortm::testing;
using common::AutoPtr;
using trainset::Doc;
using trainset::DocReader;

namespace {

std::vector<Doc> readAll(DocReader& reader) {
  std::vector<Doc> docs;
  while (reader.hasNextDoc()) docs.push_back(reader.getNextDoc());
  return docs;
}

class RejectAll : public trainset::DocFilter {
 public:
  bool filter(Doc&) override { return true; }
};

class RejectUnlabeled : public trainset::DocFilter {
 public:
  bool filter(Doc& doc) override { return doc.label.empty(); }
};

}  // namespace

TEST(DocReaderTest, LineReaders) {
  TempDir dir;
  writeFile(dir.file("lines"), "  first  \n\nlast");
  trainset::LineDocReader lines(dir.file("lines"));
  std::vector<Doc> docs = readAll(lines);
  ASSERT_EQ(docs.size(), 3u);
  EXPECT_EQ(docs[0].content, "first");
  EXPECT_EQ(docs[0].id, -1);
  EXPECT_EQ(docs[0].source, dir.file("lines"));
  EXPECT_EQ(docs[1].content, "");
  EXPECT_EQ(docs[2].content, "last");

  writeFile(dir.file("labeled"), "pos::good::really\nno label here\nneg::\n");
  trainset::LabeledLineDocReader labeled(dir.file("labeled"));
  docs = readAll(labeled);
  ASSERT_EQ(docs.size(), 3u);
  EXPECT_EQ(docs[0].label, "pos");
  EXPECT_EQ(docs[0].content, "good::really");
  EXPECT_EQ(docs[1].label, "");
  EXPECT_EQ(docs[1].content, "no label here");
  EXPECT_EQ(docs[2].label, "neg");
  EXPECT_EQ(docs[2].content, "");

  trainset::LineDocReader absent(dir.file("absent"));
  EXPECT_FALSE(absent.hasNextDoc());

  AutoPtr<DocReader> inner(new trainset::LabeledLineDocReader(dir.file("labeled")), true);
  trainset::FilteredDocReader none(inner, AutoPtr<trainset::DocFilter>(new RejectAll(), true));
  EXPECT_FALSE(none.hasNextDoc());
  AutoPtr<DocReader> again(new trainset::LabeledLineDocReader(dir.file("labeled")), true);
  trainset::FilteredDocReader some(again, AutoPtr<trainset::DocFilter>(new RejectUnlabeled(), true));
  docs = readAll(some);
  ASSERT_EQ(docs.size(), 2u);
  EXPECT_EQ(docs[1].label, "neg");
  trainset::FilteredDocReader empty{AutoPtr<DocReader>(), AutoPtr<trainset::DocFilter>()};
  EXPECT_FALSE(empty.hasNextDoc());
}

TEST(DocReaderTest, DirectoryAndXMLReaders) {
  TempDir dir;
  std::string root = dir.file("corpus");
  ASSERT_EQ(system(("mkdir -p '" + root + "/sub'").c_str()), 0);
  writeFile(root + "/a.txt", std::string("before\0after", 12));
  writeFile(root + "/sub/b.txt", "one\ntwo\n");
  trainset::DirDocReader files(root);
  std::set<std::string> contents;
  for (const Doc& d : readAll(files)) contents.insert(d.content);
  EXPECT_EQ(contents, std::set<std::string>({"before", "one\ntwo\n"}));

  trainset::DirLineDocReader lines(root);
  contents.clear();
  for (const Doc& d : readAll(lines)) contents.insert(d.content);
  // Line files keep their bytes; only whole-file reading stops at a zero.
  EXPECT_EQ(contents, std::set<std::string>({std::string("before\0after", 12), "one", "two"}));

  std::string xmlRoot = dir.file("xml");
  ASSERT_EQ(system(("mkdir -p '" + xmlRoot + "'").c_str()), 0);
  writeFile(xmlRoot + "/docs.xml",
            "<?xml version=\"1.0\" encoding=\"utf-8\"?><docs><doc><id>7</id><title>T</title><subtitle>S</subtitle>"
            "<content>body</content><label>pos</label></doc><doc><content>second</content></doc></docs>");
  trainset::XMLFileDocReader xml(xmlRoot + "/docs.xml");
  std::vector<Doc> docs = readAll(xml);
  ASSERT_EQ(docs.size(), 2u);
  EXPECT_EQ(docs[0].id, 7);
  EXPECT_EQ(docs[0].title, "T");
  EXPECT_EQ(docs[0].subTitle, "S");
  EXPECT_EQ(docs[0].content, "body");
  EXPECT_EQ(docs[0].label, "pos");
  EXPECT_EQ(docs[1].id, -1);
  EXPECT_EQ(docs[1].content, "second");
  trainset::DirXMLFileDocReader xmlDir(xmlRoot);
  EXPECT_EQ(readAll(xmlDir).size(), 2u);
  trainset::DirDocReader missing(dir.file("absent"));
  EXPECT_FALSE(missing.hasNextDoc());
}
