#include "asn1gen/parser.h"

#include <utility>

#include "asn1gen/token_reader.h"
#include "asn1gen/type_parser.h"

namespace asn1gen {
namespace {

using namespace syntax;

constexpr std::string_view kEndOfContents = "end-of-contents";
constexpr std::string_view kSequence = "sequence";

class ModuleParser {
  public:
    ModuleParser(TokenReader& reader, Module& module) : mReader(reader), mModule(module) {}

    void parse() {
        parseHead();
        while (!mReader.isWord("END")) {
            if (mReader.atEnd()) mReader.fail("expected END behind the module");
            parseAssignmentOrSkip();
        }
        mReader.next();
    }

  private:
    void parseHead() {
        mModule.name = mReader.takeUpper("a module name");
        if (mReader.isSymbol("{")) parseArcs(mReader);
        mReader.takeWord("DEFINITIONS");
        parseTagDefault();
        mReader.takeSymbol("::=");
        mReader.takeWord("BEGIN");
        if (mReader.acceptWord("EXPORTS")) skipToSemicolon();
        if (mReader.acceptWord("IMPORTS")) parseImports();
    }

    void parseTagDefault() {
        if (mReader.isSymbol("::=")) return;
        mModule.implicitTags = mReader.isWord("IMPLICIT");
        if (!mReader.isWord("EXPLICIT") && !mReader.isWord("IMPLICIT")) {
            mReader.fail("expected EXPLICIT TAGS or IMPLICIT TAGS");
        }
        mReader.next();
        mReader.takeWord("TAGS");
    }

    void skipToSemicolon() {
        while (!mReader.isSymbol(";")) {
            if (mReader.atEnd()) mReader.fail("expected ; behind the list");
            mReader.next();
        }
        mReader.next();
    }

    void parseImports() {
        while (!mReader.acceptSymbol(";")) {
            Import import;
            do {
                import.symbols.push_back(mReader.takeName("an imported name"));
            } while (mReader.acceptSymbol(","));
            mReader.takeWord("FROM");
            import.module = mReader.takeUpper("a module name");
            if (mReader.isSymbol("{")) parseArcs(mReader);
            mModule.imports.push_back(std::move(import));
        }
    }

    void parseAssignmentOrSkip() {
        const Token* start = &mReader.peek();
        try {
            parseAssignment();
        } catch (const TokenReader::Unexpected&) {
            while (!mReader.atEnd() && !mReader.isWord("END") &&
                   (&mReader.peek() == start || !atAssignment())) {
                mReader.next();
            }
        }
    }

    // An assignment, or a note in front of one, starts its line.
    bool atAssignment() const {
        if (!mReader.startsLine()) return false;
        if (mReader.peek().kind == TokenKind::Note) return true;
        if (!mReader.isName()) return false;
        for (std::size_t ahead = 1; ahead <= 3; ++ahead) {
            if (mReader.isSymbol("::=", ahead) || mReader.isSymbol("{", ahead)) return true;
            if (mReader.peek(ahead).kind != TokenKind::Upper) return false;
        }
        return false;
    }

    void parseAssignment() {
        if (mReader.peek().kind == TokenKind::Note) return parseNotedAssignment();
        if (mReader.peek().kind == TokenKind::Lower) return parseValue();
        const Name name = mReader.takeUpper("an assignment or END");
        if (mReader.acceptSymbol("::=")) {
            mModule.types.push_back({name, parseType(mReader)});
            return;
        }
        if (mReader.isSymbol("{")) mReader.fail("a parameterised type: write the type out instead");
        Name objectClass = mReader.takeUpper("::= or the class of an object set");
        parseSet(name, std::move(objectClass));
    }

    void parseNotedAssignment() {
        const std::string note(mReader.peek().text);
        if (note != kEndOfContents && note != kSequence) {
            mReader.fail("unknown note: there are \"end-of-contents\" and \"sequence\"");
        }
        mReader.next();
        const std::size_t before = mModule.types.size();
        if (mReader.peek().kind != TokenKind::Upper || mReader.peek(1).text != "::=") {
            mReader.fail("expected a type assignment below the note \"" + note + "\"");
        }
        parseAssignment();
        if (mModule.types.size() == before) return;
        (note == kSequence ? mModule.types.back().isSequence : mModule.types.back().takesEnd) = true;
    }

    void parseValue() {
        const Name name = mReader.takeLower("a name");
        if (mReader.acceptWord("OBJECT")) {
            mReader.takeWord("IDENTIFIER");
            mReader.takeSymbol("::=");
            mModule.identifiers.push_back({name, parseArcs(mReader)});
        } else if (mReader.acceptWord("INTEGER")) {
            mReader.takeSymbol("::=");
            mModule.integers.push_back({name, mReader.takeSignedNumber()});
        } else if (mReader.isSymbol("::=")) {
            mReader.fail(
                "expected OBJECT IDENTIFIER, INTEGER or an object class: a type's name begins with a "
                "capital");
        } else {
            parseObject(name);
        }
    }

    void parseObject(const Name& name) {
        ObjectAssignment object{
            name, mReader.takeUpper("OBJECT IDENTIFIER, INTEGER or an object class"), {}, {}};
        mReader.takeSymbol("::=");
        mReader.takeSymbol("{");
        mReader.takeWord("ID");
        object.id = parseIdentifierUse();
        if (mReader.acceptWord("TYPE")) object.value = parseType(mReader);
        mReader.takeSymbol("}");
        mModule.objects.push_back(std::move(object));
    }

    Arcs parseIdentifierUse() {
        if (mReader.isSymbol("{")) return parseArcs(mReader);
        const Name name = mReader.takeLower("the name of an OBJECT IDENTIFIER, or { arcs }");
        return {{{name.text, std::nullopt, name.span}}, name.span};
    }

    void parseSet(const Name& name, Name objectClass) {
        SetAssignment set{name, std::move(objectClass), {}};
        mReader.takeSymbol("::=");
        mReader.takeSymbol("{");
        if (!mReader.acceptSymbol("}")) {
            do {
                set.objects.push_back(mReader.takeLower("the name of an object"));
            } while (mReader.acceptSymbol("|"));
            mReader.takeSymbol("}", "expected | and another object, or }");
        }
        mModule.sets.push_back(std::move(set));
    }

    TokenReader& mReader;
    Module& mModule;
};

}  // namespace

File parse(const SourceFile& source, Diagnostics& diagnostics) {
    const std::vector<Token> tokens = tokenize(source, diagnostics);
    TokenReader reader(tokens, diagnostics);
    File file{&source, {}};
    try {
        while (!reader.atEnd()) {
            file.modules.emplace_back();
            ModuleParser(reader, file.modules.back()).parse();
        }
    } catch (const TokenReader::Unexpected&) {
        // Reported; a module whose frame is broken ends the file.
    }
    return file;
}

}  // namespace asn1gen
