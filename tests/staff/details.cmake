# Tests of the address and family form and the banking form.
