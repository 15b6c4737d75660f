-- The entry j of the send journal, as a state of a row holds it.
j.value ->> '$[0]', j.value ->> '$[1]', j.value ->> '$[2]', j.value ->> '$[3]', j.value ->> '$[4]'
