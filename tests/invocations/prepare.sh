# prepare.sh: the states in which invocations begin; $kind is sqlite or legacy. `state NAME` comes from run.sh: it makes
# a state once for each kind, and copies it from then on.

# An empty property database.
file() { qelprop init cars.db --format "$kind"; }

makers_table() { state file && qelprop add-table cars.db Makers --description "Who builds them"; }

makers_columns() { state makers_table && qelprop add-column cars.db Makers Name:string Country:string; }

# Two tables, one without columns.
tables() { state makers_columns && qelprop add-table cars.db Cars --description "What was built"; }

cars_columns() {
    state tables &&
        qelprop add-column cars.db Cars Model:string Price:currency:EUR Bought:date Fast:boolean=false
}

reference() {
    state cars_columns &&
        qelprop add-column cars.db Cars Maker:reference:Makers.Name --description Builder
}

makers() {
    state reference &&
        qelprop add cars.db Makers --oid 1 Name=DKW Country=Germany &&
        qelprop add cars.db Makers --oid 2 Name=Saab Country=Sweden &&
        qelprop add cars.db Makers --oid 3 Name=Volvo Country=Sweden
}

# Eight cars of three makers, with a photo column that is empty.
cars() {
    state makers &&
        qelprop add-column cars.db Cars Photo:binary &&
        qelprop add cars.db Cars --oid 1 Model=F12 Price=3250 Bought=1964-01-20 Maker=@1 &&
        qelprop add cars.db Cars --oid 2 Model=96 Price=1900.50 Bought=1966-09-01 Maker=@2 &&
        qelprop add cars.db Cars --oid 3 Model=Sonett Price=5400 Bought=1971-03-15 Fast=true Maker=@2 &&
        qelprop add cars.db Cars --oid 4 Model=PV544 Price=2100 Bought=1959-07-04 Maker=@3 &&
        qelprop add cars.db Cars --oid 5 Model=P1800 Price=8750.25 Bought=1967-02-28 Fast=true Maker=@3 &&
        qelprop add cars.db Cars --oid 6 Model=Amazon Price=null Bought=null Maker=@3 &&
        qelprop add cars.db Cars --oid 7 Model=Duett Price=1200 Bought=1961-05-02 Maker=@3 &&
        qelprop add cars.db Cars --oid 8 --no-defaults Model=Bubble Price=990
}

# A picture of sixteen bytes, no text among them.
photo() { printf '\377\330\377\340\000\020JFIF\000\001\002\000\000\001' >photo.jpg; }

# The eight cars, one of them with its photo.
cars_with_photo() { state cars && photo && qelprop set cars.db Cars @7 Photo@=photo.jpg; }

# What completion offers at the end of a command line, of which readline makes words as here.
answers() {
    eval "$(qelprop completion bash)"
    COMP_WORDBREAKS=" =:@" COMP_LINE=$1 COMP_POINT=${#1}
    mapfile -t COMP_WORDS <<<"$(grep -oE '[=:@]+|[^ =:@]+' <<<"$1")"
    [[ $1 != *' ' ]] || COMP_WORDS+=('')
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    _qelprop
    echo "${COMPREPLY[@]}"
}
export -f answers
