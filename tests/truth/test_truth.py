"""Every door says what the definitions say, of tables that nobody chose."""
import reference
from doors import C, Refused


def test_answers_are_those_of_the_reference(case, door, library, worst):
    told = []
    for question in case.questions:
        if not door.can(case, question):
            continue
        try:
            got = door.answer(case, question)
        except Refused as error:
            told.append(f"{question}: refused: {error}")
            continue
        if isinstance(door, C):
            expected = getattr(reference, question.kind)(case, **question.words)
            wrong = worst.compare(question, expected, got)
        else:
            wrong = worst.same(question, library.answer(case, question), got)
        told += [f"{question}: {text}" for text in wrong]
    assert not told, "\n".join(told)
