# Tests of the remarks of a person.
