-- The columns of the send journal entry j, as the state of a row holds them.
j.value ->> '$[0]', j.value ->> '$[1]', j.value ->> '$[2]', j.value ->> '$[3]', j.value ->> '$[4]'
