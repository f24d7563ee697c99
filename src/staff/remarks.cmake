# Sources of the remarks of a person.
